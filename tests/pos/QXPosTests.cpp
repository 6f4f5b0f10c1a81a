// The POS control: its block in the keyboard, its key grid, and its requests to the host.
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/settings/QXProgSettings.h"
#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

const std::vector<FakeDriver::Entry> kDirectory = {{MODULE_POS, 4096}};

void SetBlock(POSKeyboard& keyboard, std::initializer_list<int> keys,
              std::initializer_list<int> codes) {
    POSBlock& block = keyboard.Block(static_cast<Integer>(*keys.begin()));
    for (const int key : keys)
        block.AddKey(static_cast<Integer>(key));
    SetCodes(block.Sequence(), codes);
}

std::string BlocksIn(const POSKeyboard& keyboard) {
    std::string text;
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
        const POSBlock& block = keyboard.Block(slot);
        if (block.BlockSize() == 0)
            continue;
        text += std::to_string(slot) + ":";
        for (Integer i = 1; i <= block.BlockSize(); ++i)
            text += " " + std::to_string(block.GetKey(i));
        text += " sends " + block.Sequence().KeyString() + "\n";
    }
    return text;
}

BlockRow PosRow() {
    BlockRow row;
    row.name = "Pos";
    row.directory = kDirectory;
    row.make = [](const Platform& platform) { return std::make_unique<QXPos>(platform); };
    row.fill = [](ModuleControl& control) {
        POSKeyboard& data = static_cast<QXPos&>(control).PosData();
        SetBlock(data, {20, 21}, {});
        SetBlock(data, {3, 5, 10}, {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15, 16,
                                    17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 255});
        SetBlock(data, {7}, {30, 158});
    };
    row.golden = {
        {MODULE_POS, 0,
         Bytes("FF 00*31" // key 1: not assigned
               "  FF 00*31"
               "  01 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F 10" // 3: major of group 1
               "  11 12 13 14 15 16 17 18 19 1A 1B 1C 1D 1E FF"
               "  FF 00*31"
               "  01 00*31" // 5: member of group 1
               "  FF 00*31"
               "  00 1E 9E 00*29" // 7: single key, though the second block
               "  FF 00*31  FF 00*31"
               "  01 00*31"                                         // 10: member of group 1
               "  FF 00*31  FF 00*31  FF 00*31  FF 00*31  FF 00*31" // 11 to 15
               "  FF 00*31  FF 00*31  FF 00*31  FF 00*31"
               "  03 00*31" // 20: major of the third block, without a sequence
               "  03 00*31"
               "  FF 00*31")},
        {MODULE_POS, 104 * 32, Bytes("FF 00*31")}};
    row.randomise = [](ModuleControl& control, std::mt19937& random) {
        POSKeyboard& data = static_cast<QXPos&>(control).PosData();
        std::vector<Integer> majors;
        for (Integer key = 1; key <= POSKeyboard::kSlots; ++key) {
            const auto choice = random() % 4;
            if (choice == 0 && !majors.empty()) {
                data.Block(majors[random() % majors.size()]).AddKey(key);
            } else if (choice > 1) {
                data.Block(key).AddKey(key);
                Randomise(data.Block(key).Sequence(), random, static_cast<Integer>(random() % 32));
                majors.push_back(key);
            }
        }
    };
    row.describe = [](const ModuleControl& control) {
        return BlocksIn(static_cast<const QXPos&>(control).PosData());
    };
    row.show = [](const ModuleControl& control) {
        const auto& pos = static_cast<const QXPos&>(control);
        std::string text;
        for (Integer key = 1; key <= QXPosDisplay::kMaxKey; ++key)
            if (pos.posDisplay.IsUsedKey(key))
                text += std::to_string(key) + "=" +
                        pos.posDisplay.cmdPOS[static_cast<std::size_t>(key)].Caption + " ";
        return text + "of " + pos.lblBlockNum.Caption;
    };
    // Single keys are numbered after the groups: 1, then 3; each increments the next number.
    row.shown = "3=1 5=1 7=4 10=1 20=3 21=3 of 3";
    return row;
}

INSTANTIATE_TEST_SUITE_P(Pos, BlockRoundTrip, testing::Values(PosRow()), RowName);

class QXPosTest : public testing::Test {
protected:
    QXPosTest() { pos.SetKeyboard(&keyboard.access); }

    [[nodiscard]] POSBlock& Block(int slot) {
        return pos.PosData().Block(static_cast<Integer>(slot));
    }
    [[nodiscard]] const PosButton& Key(std::size_t key) const { return pos.posDisplay.cmdPOS[key]; }

    TestKeyboard keyboard{kDirectory};
    QXPos pos{keyboard.Services()};
};

TEST_F(QXPosTest, UploadNumbersGroupsAndSinglesAndKeepsTheLastSequence) {
    SetBlock(pos.PosData(), {50}, {99}); // replaced by the upload
    keyboard.Put(MODULE_POS,
                 Bytes("01 05 00*30"            // key 1: opens group 1
                       "  00 07 08 00 09 00*27" // single; a sequence ends at the first 0
                       "  02 00*31"             // opens group 2
                       "  02 06 00*30"          // its sequence is with its second key
                       "  01 00 04 00*29"       // no sequence: begins with 0
                       "  00 00*31"));
    keyboard.Put(MODULE_POS, std::string(32 * 99, '\xFF'), 32 * 6);
    int refreshed = 0;
    const Subscription noted = pos.Refreshed.Subscribe([&] { ++refreshed; });
    keyboard.Upload(pos);

    EXPECT_EQ(BlocksIn(pos.PosData()), "1: 1 5 sends   5\n2: 2 sends   7  8\n3: 3 4 sends   6\n"
                                       "6: 6 sends \n");
    EXPECT_EQ(Block(1).BlockID(), 1);
    EXPECT_EQ(Block(2).BlockID(), 2); // may be equal to a group's
    EXPECT_EQ(Block(3).BlockID(), 2);
    EXPECT_EQ(Block(6).BlockID(), 3);
    EXPECT_EQ(Block(6).ColorID(), 3);
    EXPECT_EQ(pos.lblBlockNum.Caption, "4");
    EXPECT_EQ(Key(5).Caption, "1");
    EXPECT_EQ(Key(50).Caption, "");
    EXPECT_EQ(refreshed, 1);
    EXPECT_FALSE(pos.DataChanged());

    keyboard.Put(MODULE_POS, std::string(3360, '\0')); // single keys only
    keyboard.Upload(pos);
    EXPECT_EQ(Block(10).ColorID(), 9);
    EXPECT_EQ(Block(11).ColorID(), 0);
}

TEST_F(QXPosTest, AGroupAbove105EndsTheUpload) {
    keyboard.Put(MODULE_POS, Bytes("69 05 00*30  6A 06 00*30  00 07 00*30")); // groups 105, 106
    const TraceLog trace;
    keyboard.Upload(pos);
    EXPECT_EQ(BlocksIn(pos.PosData()), "1: 1 sends   5\n");
    EXPECT_EQ(pos.PosData().BlockNum(), 0); // counted and shown only at the end
    EXPECT_EQ(Key(1).Caption, "");
    EXPECT_TRUE(trace.Has("Error in QXPos.DataUpload 9 - POS group 106 is not one of 1 to 105"));
}

TEST_F(QXPosTest, DownloadOfUnusualModels) {
    SetBlock(pos.PosData(), {1}, {});
    for (Integer code = 1; code <= 40; ++code) // cut to 31
        Block(1).Sequence().AddByte(code);
    SetBlock(pos.PosData(), {3, 5}, {1});
    SetBlock(pos.PosData(), {8, 5}, {-1}); // key 5 belongs to the later block, whose record shrinks
    keyboard.Download(pos);
    EXPECT_TRUE(
        keyboard.Holds(MODULE_POS, Bytes("1F FF 00*31  02 01 00*30  FF 00*31  03 00*31"), 31));
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("03 FF 00*31"), 32 * 7));
    EXPECT_TRUE(keyboard.Holds(MODULE_POS, Bytes("00 20*31"), 3360 - 32));

    Block(9).AddKey(106);
    keyboard.driver.image.assign(FakeDriver::kSize, '\x77');
    pos.DataDownload(true); // such a model is not encoded
    EXPECT_TRUE(keyboard.driver.image == std::string(FakeDriver::kSize, '\x77'));

    keyboard.driver.end = 4096 + 3359; // a failed read
    keyboard.Upload(pos);
    EXPECT_EQ(Block(9).BlockSize(), 1);
}

TEST_F(QXPosTest, GridShowsBlocksInTheirColours) {
    SetBlock(pos.PosData(), {3, 10}, {});
    Block(3).SetBlockID(8);
    Block(3).SetColorID(4);
    pos.ReloadColor();
    EXPECT_EQ(Key(10).BackColor, 0x00FF0000);
    EXPECT_EQ(Key(9).BackColor, static_cast<Long>(0x8000000F));

    MemoryRegistry registry;
    QXProgSettings preferences(registry);
    preferences.SetPOSColorUnused(11);
    preferences.DefPOSColorBlock(4, 22);
    const TraceLog trace;
    pos.SetPrefSource(&preferences);
    EXPECT_TRUE(trace.Has("QXPos.Set PrefSource: ==>  1"));
    EXPECT_EQ(Key(10).Caption, "8");
    EXPECT_EQ(Key(10).BackColor, 22);
    EXPECT_EQ(Key(9).BackColor, 11);
}

TEST_F(QXPosTest, EditAndCleanAllNeedTheHostsConsent) {
    SetBlock(pos.PosData(), {3}, {1});
    int refreshed = 0;
    const Subscription noted = pos.Refreshed.Subscribe([&] { ++refreshed; });
    bool answer = true;
    const auto host = [&](bool& fCancel) {
        EXPECT_TRUE(fCancel);
        fCancel = answer;
    };
    Subscription edits, cleans;
    for (const bool answers : {false, true}) { // no answer, then the host declines
        if (answers) {
            edits = pos.POSEditorRequested.Subscribe(host);
            cleans = pos.RemoveAllBlocks.Subscribe(host);
        }
        pos.cmdEdit_Click();
        pos.cmdCleanAll_Click();
        EXPECT_EQ(Block(3).BlockSize(), 1);
        EXPECT_FALSE(pos.DataChanged());
        EXPECT_EQ(refreshed, 0);
    }
    answer = false;
    pos.cmdEdit_Click();
    EXPECT_TRUE(pos.DataChanged());
    EXPECT_EQ(refreshed, 1);
    EXPECT_EQ(pos.lblBlockNum.Caption, "1");
    EXPECT_TRUE(pos.posDisplay.IsUsedKey(3));
    pos.cmdCleanAll_Click();
    EXPECT_EQ(refreshed, 2);
    EXPECT_EQ(pos.lblBlockNum.Caption, "0");
    EXPECT_FALSE(pos.posDisplay.IsUsedKey(3));
}

TEST(QXPosDisplay, PaintsTheKeysThatItHas) {
    QXPosDisplay display;
    const PosButton& last = display.cmdPOS[150];
    std::vector<Integer> clicked;
    const Subscription clicks =
        display.KeyClicked.Subscribe([&](Integer nKeyIndex) { clicked.push_back(nKeyIndex); });
    for (const Integer key : {Integer{150}, Integer{0}, Integer{151}, Integer{-1}}) {
        display.SetAsUnused(key, 1);
        display.SetKeyColor(key, 5);
        display.SetAsCurrentCaption(key, "12", "tip");
        EXPECT_EQ(display.IsUsedKey(key), key == 150);
        display.cmdPOS_Click(key);
    }
    EXPECT_EQ(clicked, std::vector<Integer>{150});
    EXPECT_EQ(display.Focus(), 150);
    EXPECT_TRUE(display.cmdPOS[105].Visible && last.Visible); // named, unlike the other extra keys
    EXPECT_FALSE(display.cmdPOS[106].Visible || display.cmdPOS[149].Visible);
    EXPECT_EQ(last.FontSize, 10);
    display.SetKeyCaption(150, "  ", "");
    EXPECT_EQ(last.FontSize, 8);
    EXPECT_EQ(last.BackColor, 5);
    EXPECT_FALSE(display.IsUsedKey(150));
}

} // namespace
} // namespace qx::test
