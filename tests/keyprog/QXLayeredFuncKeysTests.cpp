// The layered function keys: their areas in the keyboard, navigation through layers and keys, and
// the control's requests to its host.
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "support/BlockRoundTrip.h"

#include <stdexcept>

namespace qx::test {
namespace {

const std::vector<FakeDriver::Entry> kDirectory = {{MODULE_LAYERED_FUNCKEYS, 4096},
                                                   {MODULE_GUID, 40000}};
constexpr Guid kGuid{0x04030201, 0x0605, 0x0807, {9, 10, 11, 12, 13, 14, 15, 16}};

void VisitSequences(const QXLayeredFuncKeys& control,
                    const std::function<void(Integer, Integer, const KeySequence&)>& visit) {
    for (Integer layer = 0; layer < 10; ++layer)
        for (Integer key = 0; key < 24; ++key)
            visit(layer, key, control.Layer(layer).GetKey(key));
}

void SetLength(KeySequence& sequence, Integer length) {
    sequence.Clear();
    while (sequence.Length() < length)
        sequence.AddByte(7);
}

BlockRow LayeredRow() {
    BlockRow row;
    row.name = "LayeredFuncKeys";
    row.directory = kDirectory;
    row.make = [](const Platform& platform) {
        return std::make_unique<QXLayeredFuncKeys>(platform);
    };
    row.fill = [](ModuleControl& control) {
        auto& keys = static_cast<QXLayeredFuncKeys&>(control);
        SetCodes(keys.Layer(0).GetKey(0), {30, 158});
        SetLength(keys.Layer(0).GetKey(23), 128);
        SetCodes(keys.Layer(9).GetKey(23), {255});
        keys.SetIdentifier(kGuid);
    };
    row.golden = {
        {MODULE_LAYERED_FUNCKEYS, 0, Bytes("1E 9E 00*126  00*128")},
        {MODULE_LAYERED_FUNCKEYS, 23 * 128, Bytes("07*128  00*128")}, // a full slot has no 0
        {MODULE_LAYERED_FUNCKEYS, 239 * 128, Bytes("FF 00*127")},
        {MODULE_GUID, 0, Bytes("01 02 03 04  05 06  07 08  09 0A 0B 0C 0D 0E 0F 10")},
    };
    // A download skips the slots of empty sequences, so none is empty here.
    row.randomise = [](ModuleControl& control, std::mt19937& random) {
        auto& keys = static_cast<QXLayeredFuncKeys&>(control);
        for (Integer layer = 0; layer < 10; ++layer)
            for (Integer key = 0; key < 24; ++key) {
                const auto length = random() % 8 == 0 ? 127 + random() % 2 : 1 + random() % 8;
                Randomise(keys.Layer(layer).GetKey(key), random, static_cast<Integer>(length));
            }
    };
    row.describe = [](const ModuleControl& control) {
        const auto& keys = static_cast<const QXLayeredFuncKeys&>(control);
        std::string text = ToText(keys.Identifier());
        VisitSequences(keys, [&](Integer layer, Integer key, const KeySequence& sequence) {
            text += "\n" + std::to_string(layer) + "/" + std::to_string(key) + ": " +
                    sequence.KeyString() + " " + keys.Layer(layer).GetKeyDesc(key);
        });
        return text;
    };
    row.show = [](const ModuleControl& control) {
        const auto& keys = static_cast<const QXLayeredFuncKeys&>(control);
        std::string text = keys.lblLayerID.Caption + ":";
        for (std::size_t key = 0; key < keys.cmdFuncKey.size(); ++key)
            if (keys.cmdFuncKey[key].Programmed)
                text += " " + std::to_string(key);
        return text;
    };
    row.shown = "0: 0 23";
    return row;
}

INSTANTIATE_TEST_SUITE_P(KeyProg, BlockRoundTrip, testing::Values(LayeredRow()), RowName);

class LayeredFuncKeysTest : public testing::Test {
protected:
    LayeredFuncKeysTest() { control.SetKeyboard(&keyboard.access); }

    using Requests = std::vector<FakeDriver::Request>;
    Requests RequestsOf(void (QXLayeredFuncKeys::*prepare)(bool), bool LoadInKeyboard) {
        keyboard.access.DataTransferPrepare();
        (control.*prepare)(LoadInKeyboard);
        return keyboard.driver.requests;
    }

    TestKeyboard keyboard{kDirectory};
    QXLayeredFuncKeys control{keyboard.Services()};
};

TEST_F(LayeredFuncKeysTest, DescriptionsAreCutAndFilledInTheImage) {
    const std::string umlauts = "K\xC3\xA4se \xE2\x82\xAC";
    const std::string smiley = "\xF0\x9F\x98\x80";
    const std::string golden = Bytes("4B 00  E4 00  73 00  65 00  20 00  AC 20  00*116" // 0/0
                                     "  78 00 3D D8  42 00  00*2  43 00  00*118");      // 0/1
    FuncKeyLayer& layer = control.Layer(0);
    layer.SetKeyDesc(0, umlauts);
    layer.SetKeyDesc(2, std::string(70, 'x'));
    layer.SetKeyDesc(3, std::string(63, 'y') + smiley); // cut inside a surrogate pair
    layer.SetKeyDesc(4, std::string(62, 'z') + smiley);
    control.Layer(9).SetKeyDesc(23, smiley);
    std::string& image = keyboard.driver.image;
    image.assign(FakeDriver::kSize, '\xEE');
    SetCodes(control.Layer(9).GetKey(23), {30, 158});
    const TraceLog trace;
    control.DataDownload(true);
    std::string zeros;
    for (int i = 0; i < 126; ++i)
        zeros += " 0";
    EXPECT_TRUE(trace.Has("Key 23 : 1E 9E" + zeros));
    EXPECT_EQ(image.substr(70000, 128), golden.substr(0, 128));
    EXPECT_EQ(image.substr(70000 + 239 * 128, 129), Bytes("3D D8  00 DE  00*124  EE"));

    image.replace(70000 + 128, 128, golden, 128, 128); // with an unpaired surrogate
    QXLayeredFuncKeys read;
    read.SetKeyboard(&keyboard.access);
    read.DataUpload(true);
    EXPECT_EQ(read.Layer(0).GetKeyDesc(0), umlauts);
    EXPECT_EQ(read.Layer(0).GetKeyDesc(1), std::string("x\xEF\xBF\xBD") + "B");
    EXPECT_EQ(read.Layer(0).GetKeyDesc(2), std::string(64, 'x'));
    EXPECT_EQ(image.substr(70000 + 4 * 128 - 4, 4), Bytes("79 00 3D D8"));
    EXPECT_EQ(read.Layer(0).GetKeyDesc(3), std::string(63, 'y') + "\xEF\xBF\xBD");
    EXPECT_EQ(read.Layer(0).GetKeyDesc(4), std::string(62, 'z') + smiley);
}

TEST_F(LayeredFuncKeysTest, OnlyUsedPartsOfSlotsAreRequestedForTheKeyboard) {
    const FakeDriver::Request guid = {MODULE_GUID, 40000, 16};
    EXPECT_EQ(RequestsOf(&QXLayeredFuncKeys::PrepareDataDownload, true), Requests{guid});
    EXPECT_EQ(control.TransferSize(true), 16);
    EXPECT_EQ(control.TransferSize(false), 16 + 30720);
    EXPECT_EQ(QXLayeredFuncKeys().TransferSize(true), 0); // no keyboard assigned yet

    SetLength(control.Layer(0).GetKey(1), 1);
    SetLength(control.Layer(1).GetKey(0), 127);
    SetLength(control.Layer(1).GetKey(1), 200);
    EXPECT_EQ(RequestsOf(&QXLayeredFuncKeys::PrepareDataDownload, true),
              (Requests{{MODULE_LAYERED_FUNCKEYS, 4096 + 128, 2},
                        {MODULE_LAYERED_FUNCKEYS, 4096 + 24 * 128, 128},
                        {MODULE_LAYERED_FUNCKEYS, 4096 + 25 * 128, 128},
                        guid}));
    EXPECT_EQ(control.TransferSize(true), 16 + 2 + 2 * 128);

    const FakeDriver::Request all = {MODULE_LAYERED_FUNCKEYS, 4096, 30720};
    EXPECT_EQ(RequestsOf(&QXLayeredFuncKeys::PrepareDataDownload, false), (Requests{all, guid}));
    EXPECT_EQ(RequestsOf(&QXLayeredFuncKeys::PrepareDataUpload, true),
              (Requests{all, guid, {MODULE_LAYER_FUNCKEY_DESC, 70000, 30720}}));

    TestKeyboard other({{MODULE_GUID, 4096}});
    control.SetKeyboard(&other.access);
    const TraceLog trace;
    other.Upload(control);
    other.Download(control);
    EXPECT_EQ(std::count(trace.lines.begin(), trace.lines.end(),
                         "ERROR : NO ADDRESS FOR MODULE LAYERED FUNC KEYS"),
              2); // once for each prepared transfer
    EXPECT_TRUE(other.lastRequests.empty());
    EXPECT_TRUE(other.driver.image == std::string(FakeDriver::kSize, '\xEE')); // nothing written
}

TEST_F(LayeredFuncKeysTest, FailedSequencesStopTheUploadButNotTheDownload) {
    control.SetIdentifier(kGuid);
    control.Layer(0).SetKeyDesc(0, "old");
    keyboard.driver.statuses = {{"QXCFG_ImageRead", 5}, {"QXCFG_ImageWrite", 5}};
    control.DataUpload(true);
    EXPECT_EQ(control.Identifier(), kGuid);
    EXPECT_EQ(control.Layer(0).GetKeyDesc(0), "old");
    control.DataDownload(true);
    EXPECT_EQ(keyboard.driver.image.substr(40000, 2), Bytes("01 02"));
    EXPECT_EQ(keyboard.driver.image.substr(70000, 2), Bytes("6F 00"));
}

TEST_F(LayeredFuncKeysTest, LayersGoRoundAndDropTheKey) {
    int refreshed = 0;
    const Subscription noted = control.Refreshed.Subscribe([&] { ++refreshed; });
    control.Layer(9).SetKeyDesc(4, "nine");
    control.cmdFuncKey_Click(4);
    control.cmdLayer_Click(1); // down from 0
    EXPECT_EQ(control.spinLayer.Value, 9);
    EXPECT_EQ(control.CurrentKey(), QXLayeredFuncKeys::kNoKey);
    control.cmdFuncKey_Click(4);
    EXPECT_EQ(control.txtSymbolDesc.Text, "nine");
    control.cmdLayer_Click(0); // up
    EXPECT_EQ(control.lblLayerID.Caption, "0");
    EXPECT_EQ(control.txtSymbolDesc.Text, "");
    control.spinLayer.Value = 12; // does not exist
    control.spinLayer_Change();
    control.ShowCurrentSelectedLayerOnKeyboard();
    EXPECT_EQ(keyboard.driver.layer, 9);
    EXPECT_EQ(refreshed, 5);
    EXPECT_THROW(static_cast<void>(control.Layer(10)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(control.Layer(-1)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(control.Layer(0).GetKey(24)), std::out_of_range);

    control.txtSymbolDesc.Text = "Cash"; // no key is selected
    control.txtSymbolDesc_Change();
    EXPECT_FALSE(control.DataChanged());
    control.cmdFuncKey_Click(2);
    control.txtSymbolDesc.Text = "Cash";
    control.txtSymbolDesc_Change();
    EXPECT_TRUE(control.DataChanged());
    EXPECT_EQ(control.cmdFuncKey[2].ToolTip, "Cash");
    EXPECT_EQ(control.Layer(9).GetKeyDesc(2), "Cash");
}

TEST_F(LayeredFuncKeysTest, EditAndCleanAskTheHost) {
    enum { Edit, CleanKey, CleanLayer, CleanAll };
    VisitSequences(control, [&](Integer layer, Integer key, const KeySequence&) {
        SetCodes(control.Layer(layer).GetKey(key), {30});
    });
    const auto codes = [&] {
        int count = 0;
        VisitSequences(control, [&](Integer, Integer, const KeySequence& sequence) {
            count += sequence.Length();
        });
        return count;
    };
    int withoutKey = 0;
    const Subscription noEdit = control.NoKeySelectedToEdit.Subscribe([&] { ++withoutKey; });
    const Subscription noClean = control.NoKeySelectedToClean.Subscribe([&] { ++withoutKey; });
    for (const Integer action : {Edit, CleanKey, CleanLayer, CleanAll}) // nobody answers
        control.cmdEdit_Click(action);
    control.cmdFuncKey_Click(5);
    control.cmdEdit_Click(Edit);
    EXPECT_EQ(withoutKey, 2);

    bool answer = true;
    const auto host = [&](bool& fCancel) {
        EXPECT_TRUE(fCancel);
        fCancel = answer;
    };
    const Subscription cleansLayer = control.CleanThisLayer.Subscribe(host);
    const Subscription cleansAll = control.CleanAllLayers.Subscribe(host);
    std::string newSeq = " 31159";
    const Subscription edits = control.EditLayeredFuncKey.Subscribe(
        [&](const std::string& sCurrSeq, bool& fCancelEdit, std::string& sNewSeq) {
            EXPECT_EQ(sCurrSeq, control.Layer(0).GetKey(5).KeyString());
            sNewSeq = newSeq;
            host(fCancelEdit);
        });
    for (const Integer action : {Edit, CleanLayer, CleanAll}) // the host declines
        control.cmdEdit_Click(action);
    EXPECT_EQ(codes(), 240);
    EXPECT_FALSE(control.DataChanged());

    answer = false;
    control.cmdLayer_Click(0); // on another layer, and the user switches to a third meanwhile
    control.cmdFuncKey_Click(7);
    {
        const Subscription turns = control.EditLayeredFuncKey.Subscribe(
            [&](const std::string&, bool&, std::string&) { control.cmdLayer_Click(0); });
        SetCodes(control.Layer(0).GetKey(5), {30});
        SetCodes(control.Layer(1).GetKey(7), {30});
        control.cmdEdit_Click(Edit);
    }
    EXPECT_EQ(control.Layer(1).GetKey(7).KeyString(), newSeq);
    EXPECT_EQ(control.Layer(0).GetKey(7).KeyString() + control.Layer(2).GetKey(7).KeyString(),
              " 30 30");
    SetCodes(control.Layer(1).GetKey(7), {30});
    control.SetDataChanged(false);
    control.cmdLayer_Click(1);
    control.cmdLayer_Click(1);
    control.cmdFuncKey_Click(5);
    const Subscription advance = control.AdvanceEdit.Subscribe([](bool& fEdit) { fEdit = !fEdit; });
    control.lblCurrSeq_KeyPress();
    EXPECT_EQ(control.Layer(0).GetKey(5).KeyString(), newSeq);
    EXPECT_TRUE(control.DataChanged());
    control.SetDataChanged(false);
    newSeq.assign(3 * 40000, ' '); // longer than a sequence can be
    control.cmdEdit_Click(Edit);
    EXPECT_EQ(codes(), 241);
    EXPECT_FALSE(control.DataChanged());
    control.cmdEdit_Click(CleanKey); // without a question
    EXPECT_EQ(codes(), 239);
    EXPECT_TRUE(control.DataChanged());
    EXPECT_FALSE(control.cmdFuncKey[5].Programmed);
    control.cmdEdit_Click(CleanLayer);
    EXPECT_EQ(codes(), 9 * 24);
    control.cmdEdit_Click(CleanAll);
    EXPECT_EQ(codes(), 0);
}

} // namespace
} // namespace qx::test
