// The models of the POS module: blocks, the key mapping, code pages.
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "qxcontrols/pos/QXPosCodePage.h"
#include "support/FakeDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <stdexcept>

namespace qx::test {
namespace {

TEST(PosBlocks, KeysAreAddedAndRemovedAtTheEnd) {
    POSBlock block;
    block.CleanLast(); // nothing to remove
    for (Integer key = 1; key <= 106; ++key)
        block.AddKey(key);
    EXPECT_EQ(block.GetLast(), 105); // full
    block.CleanLast();
    EXPECT_FALSE(block.HasKey(105));
    EXPECT_EQ(block.GetKey(105), 0);
}

TEST(PosBlocks, KeyboardCountsFindsCopiesAndCleans) {
    POSKeyboard keyboard;
    for (const Integer slot : {Integer{105}, Integer{20}}) {
        keyboard.Block(slot).AddKey(20);
        keyboard.Block(slot).Sequence().AddByte(30);
        keyboard.Block(slot).SetBlockID(slot);
    }
    EXPECT_EQ(keyboard.FindBlockForKey(20), 20); // the lower of the two slots
    EXPECT_EQ(keyboard.FindBlockForKey(21), 0);

    POSKeyboard copy;
    copy.Block(1).AddKey(1);
    copy.CopyContent(&keyboard);
    copy.CopyContent(nullptr);
    EXPECT_EQ(copy.BlockNum(), 2);
    EXPECT_EQ(copy.Block(105).Sequence().KeyString(), " 30");
    copy.CleanAllBlocks();
    EXPECT_EQ(copy.BlockNum(), 0);
    EXPECT_EQ(copy.Block(105).BlockSize(), 0);
    EXPECT_EQ(copy.Block(105).Sequence().Length(), 0);
    EXPECT_EQ(copy.Block(105).BlockID(), 105);
    EXPECT_THROW(static_cast<void>(copy.Block(0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(copy.Block(106)), std::out_of_range);
}

TEST(PosCodeMapping, HasTheTableOfTheDevice) {
    constexpr Integer kTable[] = {
        110, 112, 113, 114, 115, 116, 117, 118, 119, 120, // key 1: Esc and the function keys
        121, 122, 123, 55,  124, 16,  1,   75,  76,  80,  // key 11
        81,  85,  86,  40,  41,  27,  28,  12,  13,  125, // key 21
        2,   3,   4,   5,   6,   7,   8,   9,   10,  11,  // key 31: the digit row
        15,  90,  95,  100, 126, 17,  18,  19,  20,  21,  // key 41
        22,  23,  24,  25,  26,  29,  91,  96,  101, 105, // key 51
        30,  31,  32,  33,  34,  35,  36,  37,  38,  39,  // key 61
        43,  92,  97,  102, 106, 44,  46,  47,  48,  49,  // key 71
        50,  51,  52,  53,  54,  57,  93,  98,  103, 108, // key 81
        58,  60,  61,  61,  61,  83,  84,  79,  89,  62,  // key 91
        64,  99,  99,  104, 108,                          // key 101
    };
    const POSCodeMapping map;
    std::map<Integer, Integer> lowest; // key by position code
    for (Integer key = 1; key <= 105; ++key) {
        EXPECT_EQ(map.GetPositionCodeForKey(key), kTable[key - 1]) << key;
        lowest.emplace(kTable[key - 1], key);
    }
    for (Integer code = -1; code <= 141; ++code)
        EXPECT_EQ(map.GetKeyIndex(code), lowest.contains(code) ? lowest[code] : 0) << code;
    EXPECT_THROW(static_cast<void>(map.GetPositionCodeForKey(0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(map.GetPositionCodeForKey(106)), std::out_of_range);
}

char CodePageByte(int position) {
    return static_cast<char>(position % 251 + 1); // never 0
}

TEST(PosCodePage, FileGivesItsFirst256Bytes) {
    const TempFolder folder;
    const auto path = folder / "page";
    PosCodePage page;
    const auto load = [&](int size) {
        std::ofstream file(path, std::ios::binary);
        for (int i = 1; i <= size; ++i)
            file.put(CodePageByte(i));
        file.close();
        return page.LoadPageFromFile(path.string());
    };
    EXPECT_FALSE(page.LoadPageFromFile(path.string())); // the file does not exist
    EXPECT_FALSE(page.LoadPageFromFile(path.parent_path().string()));
    EXPECT_FALSE(load(255));
    EXPECT_EQ(page.GetByte(255), 5); // from before the end of the file
    EXPECT_TRUE(load(300));
    EXPECT_EQ(page.GetByte(1), 2);
    EXPECT_EQ(page.GetByte(256), 6);
    EXPECT_EQ(page.GetByte(257), 0);
    EXPECT_EQ(page.GetByte(0), 0);
}

TEST(PosCodePage, KeyboardsPageIsReadAtItsAddressAndCompared) {
    struct NotedPointer : WaitPointer {
        int shown = 0;
        void Show() override { ++shown; }
        void Restore() override { --shown; }
    } pointer;
    FakeDriver driver;
    std::vector<std::string> whileWaiting;
    driver.onCall = [&](const std::string& call) {
        if (pointer.shown == 1)
            whileWaiting.push_back(call);
    };
    Platform platform;
    platform.waitPointer = &pointer;
    QXKeyboardAccess access(driver);
    QXPosCodePage pages(platform);
    EXPECT_TRUE(pages.PagesAreEqual()); // both new
    EXPECT_FALSE(pages.KeyboardPage().IsEqualPage(nullptr));
    EXPECT_FALSE(pages.KeyboardPage().LoadPageFromKeyboard(nullptr));

    driver.requests = {{6, 0, 1}};  // of another user
    driver.memory[27776 + 255] = 1; // the last byte
    EXPECT_TRUE(pages.KeyboardPage().LoadPageFromKeyboard(&access));
    EXPECT_EQ(driver.requests, (std::vector<FakeDriver::Request>{{0, 27776, 256}}));
    EXPECT_FALSE(pages.PagesAreEqual());
    EXPECT_EQ(pointer.shown, 0);
    EXPECT_EQ(whileWaiting.size(), 3U + 256U);
    EXPECT_EQ(whileWaiting[3], "QXCFG_ImageRead(27776, 1)");

    pages.FilePage() = pages.KeyboardPage();
    EXPECT_TRUE(pages.PagesAreEqual());
    driver.statuses["QXCFG_ImageRead"] = 5; // an unreadable byte counts as 0
    EXPECT_TRUE(pages.KeyboardPage().LoadPageFromKeyboard(&access));
    EXPECT_EQ(pages.KeyboardPage().GetByte(256), 0);
}

} // namespace
} // namespace qx::test
