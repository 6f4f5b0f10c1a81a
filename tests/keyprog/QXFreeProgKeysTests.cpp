// The free keys: their block in either key order, and editing with and without the
// host's answer.
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keys/LayoutTextSource.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/BlockRoundTrip.h"

#include <set>

namespace qx::test {
namespace {

// A layout whose named keys are programmable and all others plain. Every caption is the letter k
// and the key's id.
class Layout : public LayoutTextSource {
public:
    explicit Layout(std::set<Long> programmable) : m_programmable(std::move(programmable)) {}

    void Reset() override {}
    bool Open(const std::string& /*sFilename*/) override { return true; }
    bool OpenLanguage(Long& /*lLangID*/, const std::string& /*sFolder*/) override { return true; }
    [[nodiscard]] std::string String(Long lNumber) const override {
        const Long key = lNumber - kFirstKey;
        return (m_programmable.contains(key) ? "20  k" : "10  k") + std::to_string(key);
    }

private:
    std::set<Long> m_programmable;
};

std::shared_ptr<QXKeyboardLayoutData> LayoutWith(std::set<Long> programmable) {
    auto layout =
        std::make_shared<QXKeyboardLayoutData>(std::make_unique<Layout>(std::move(programmable)));
    EXPECT_TRUE(layout->OpenLayoutByName("test"));
    return layout;
}

BlockRow FreeProgKeysRow(std::string name, KeyboardModuleIDs module, std::vector<Integer> order,
                         std::string golden, std::string shown) {
    BlockRow row;
    row.name = std::move(name);
    row.directory = {{module, 4096}};
    // The keys at every boundary of the two key orders.
    const auto layout = LayoutWith({1, 65, 66, 74, 75, 126, 127, 140});
    row.make = [module, layout](const Platform& platform) {
        auto control = std::make_unique<QXFreeProgKeys>(platform);
        control->SetConfigID(module);
        control->SetLayoutSource(layout.get());
        control->ReloadKeysSettings();
        return control;
    };
    row.fill = [order](ModuleControl& control) {
        for (const Integer key : order) // each key sends its own id; key 66 sends nothing
            if (key != 66)
                SetCodes(static_cast<QXFreeProgKeys&>(control).Sequences().Key(key), {key});
    };
    row.golden = {{module, 0, Bytes(golden)}};
    row.randomise = [order](ModuleControl& control, std::mt19937& random) {
        for (const Integer key : order)
            Randomise(static_cast<QXFreeProgKeys&>(control).Sequences().Key(key), random,
                      static_cast<Integer>(random() % 33));
    };
    row.describe = [](const ModuleControl& control) {
        std::string text;
        for (Integer key = 0; key <= 140; ++key)
            text +=
                static_cast<const QXFreeProgKeys&>(control).Sequences().Key(key).KeyString() + ";";
        return text;
    };
    row.show = [](const ModuleControl& control) {
        std::string text;
        for (Integer key = 0; key <= 140; ++key)
            if (static_cast<const QXFreeProgKeys&>(control)
                    .layoutDisplay.cmdKey[static_cast<std::size_t>(key)]
                    .Programmed)
                text += std::to_string(key) + " ";
        return text;
    };
    row.shown = std::move(shown);
    return row;
}

INSTANTIATE_TEST_SUITE_P(
    FreeProgKeys, BlockRoundTrip,
    testing::Values(FreeProgKeysRow("CommonOrder", MODULE_FREEPROGRAMMABLE_KEYS,
                                    {1, 65, 66, 74, 75, 126, 127, 140},
                                    "01 00*31  41 00*31  00*32  4A 00*31"
                                    "  4B 00*31  7E 00*31  7F 00*31  8C 00*31",
                                    "1 65 74 75 126 127 140 "),
                    FreeProgKeysRow("OrderOfThe4620", MODULE_FUNCKEYS_X1_4620, {66, 74, 75, 126},
                                    "4B 00*31  7E 00*31  00*32  4A 00*31"
                                    "  20*128", // keys 1, 65, 127, 140 are counted but have no slot
                                    "74 75 126 ")),
    RowName);

class FreeProgKeysTest : public testing::Test {
protected:
    FreeProgKeysTest() {
        control.SetKeyboard(&keyboard.access);
        control.SetLayoutSource(layout.get());
        control.ReloadKeysSettings();
    }

    [[nodiscard]] const std::string& Codes(Long key) const {
        return control.Sequences().Key(key).KeyString();
    }
    void Pick(Long key) { control.layoutDisplay.OnKeyClicked.Raise(key); }

    enum { Edit, Clean, CleanAll };

    TestKeyboard keyboard{{{MODULE_FREEPROGRAMMABLE_KEYS, 4096}}};
    std::shared_ptr<QXKeyboardLayoutData> layout = LayoutWith({0, 12, 30});
    QXFreeProgKeys control{keyboard.Services()};
};

TEST_F(FreeProgKeysTest, KeysWithoutASlotSurviveAnUpload) {
    EXPECT_EQ(control.TransferSize(true), 3 * 32);
    for (const Long key : {0, 1, 12, 30})
        SetCodes(control.Sequences().Key(key), {99});
    keyboard.Put(MODULE_FREEPROGRAMMABLE_KEYS, Bytes("01 02 00*30  00 05 00*30  07*32"));
    keyboard.Upload(control);
    EXPECT_EQ(Codes(0), " 99"); // counted, but has no slot
    EXPECT_EQ(Codes(1), " 99");
    EXPECT_EQ(Codes(12), "  1  2");
    EXPECT_EQ(Codes(30), "");

    keyboard.driver.statuses["QXCFG_ImageRead"] = 5;
    SetCodes(control.Sequences().Key(12), {99});
    keyboard.Upload(control);
    EXPECT_EQ(Codes(12), " 99");

    control.SetConfigID(MODULE_FUNCKEYS_X1_4610); // which the keyboard does not have
    keyboard.Upload(control);
    keyboard.Download(control);
    EXPECT_TRUE(keyboard.lastRequests.empty());
    EXPECT_EQ(keyboard.boxes.texts,
              std::vector<std::string>(2, "INVALID ADDRESSES FOR FREEPROGRAMMABLE KEYS-CONFIG"));
}

TEST_F(FreeProgKeysTest, EditStoresTheHostsSequence) {
    SetCodes(control.Sequences().Key(12), {30, 158});
    std::vector<Integer> notEditable;
    const Subscription refused = control.KeyNoEditable.Subscribe(
        [&](Integer nPositionCode) { notEditable.push_back(nPositionCode); });
    control.cmdEdit_Click(Edit); // no key is selected
    Pick(13);
    control.cmdEdit_Click(Edit);
    EXPECT_EQ(notEditable, (std::vector<Integer>{-1, 13}));

    int redrawn = 0;
    const Subscription drawn = control.layoutDisplay.Refreshed.Subscribe([&] { ++redrawn; });
    Pick(12);
    EXPECT_EQ(redrawn, 1);
    EXPECT_EQ(control.lblCurrSeq.Caption, "k30 ");
    control.chkShowDetails.Value = 1;
    control.chkShowDetails_Click();
    EXPECT_EQ(control.lblCurrSeq.Caption, "k30 ^k30 ");

    int refreshed = 0;
    const Subscription noted = control.Refreshed.Subscribe([&] { ++refreshed; });
    std::string answer = " 30";
    bool cancel = true;
    const auto host = [&](Integer nPosCode, const std::string& sOutSeq, bool& fCancelEdit,
                          std::string& sInSeq) {
        EXPECT_EQ(nPosCode, 12);
        EXPECT_EQ(sOutSeq, " 30158");
        EXPECT_EQ(sInSeq, sOutSeq);
        EXPECT_FALSE(fCancelEdit);
        fCancelEdit = cancel;
        if (!answer.empty())
            sInSeq = answer;
    };
    control.cmdEdit_Click(Edit); // no answer is not a refusal
    EXPECT_EQ(Codes(12), " 30158");
    EXPECT_TRUE(control.DataChanged());
    control.SetDataChanged(false);
    refreshed = 0;
    const Subscription edits = control.EditSequence.Subscribe(host);
    control.cmdEdit_Click(Edit); // the host declines
    cancel = false;
    control.lblCurrSeq_KeyPress(); // this does not start the edit
    answer.assign(3 * 40000, ' '); // longer than a sequence can be
    control.cmdEdit_Click(Edit);
    EXPECT_EQ(Codes(12), " 30158");
    EXPECT_FALSE(control.DataChanged());
    EXPECT_EQ(refreshed, 0);

    answer = ""; // the host agrees without a change
    control.cmdEdit_Click(Edit);
    EXPECT_EQ(Codes(12), " 30158");
    EXPECT_TRUE(control.DataChanged());

    control.SetDataChanged(false);
    refreshed = 0;
    answer = " 30";
    const Subscription advance = control.AdvanceEdit.Subscribe([](bool& fEdit) { fEdit = !fEdit; });
    control.lblCurrSeq_KeyPress();
    EXPECT_EQ(Codes(12), " 30");
    EXPECT_EQ(control.lblCurrSeq.Caption, "k30 ");
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(refreshed, 1);
}

TEST_F(FreeProgKeysTest, CleanAsksWithoutACurrentKeyToo) {
    SetCodes(control.Sequences().Key(12), {99});
    int asked = 0;
    const Subscription host = control.RemoveSequence.Subscribe([&](bool&) { ++asked; });
    control.cmdEdit_Click(Clean);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(Codes(12), " 99");
    EXPECT_TRUE(control.DataChanged());
}

// A keyboard may have two such modules, each with its own control.
TEST_F(FreeProgKeysTest, TraceLinesBeginWithTheInstanceName) {
    control.SetName("Upper");
    const TraceLog trace;
    control.SetPrefSource(nullptr);
    control.DataDownload(true);
    EXPECT_TRUE(trace.Has("Upper.Set PrefSource As QXProgSettings: ==>  0"));
    EXPECT_TRUE(trace.Has("Upper.DataDownload"));
}

TEST_F(FreeProgKeysTest, RemovalsAreCarriedOutUnlessTheHostRefuses) {
    for (const Integer action : {Clean, CleanAll}) {
        for (const Long key : {12, 30})
            SetCodes(control.Sequences().Key(key), {99});
        Pick(12);
        control.SetDataChanged(false);
        Event<bool&>& event = action == Clean ? control.RemoveSequence : control.RemoveAllSequences;
        {
            const Subscription declines = event.Subscribe([](bool& fRemoveIt) {
                EXPECT_TRUE(fRemoveIt);
                fRemoveIt = false;
            });
            control.cmdEdit_Click(action);
            EXPECT_EQ(Codes(12), " 99");
            EXPECT_FALSE(control.DataChanged());
        }
        // The answer applies to the key of the question, even if another has been picked by then.
        const Subscription picks = event.Subscribe([&](bool&) { Pick(30); });
        control.cmdEdit_Click(action);
        Pick(12);
        EXPECT_EQ(Codes(12), "");
        EXPECT_EQ(Codes(30), action == Clean ? " 99" : "");
        EXPECT_EQ(control.lblCurrSeq.Caption, "");
        EXPECT_TRUE(control.DataChanged());
    }
}

} // namespace
} // namespace qx::test
