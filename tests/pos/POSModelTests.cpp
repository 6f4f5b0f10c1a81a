// The models of the POS module: blocks, the key mapping, code pages.
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "qxcontrols/pos/QXPosCodePage.h"
#include "support/FakeDriver.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>
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
    EXPECT_EQ(keyboard.FindBlockForKey(20), 20); // the lower slot of two
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

TEST(PosCodeMapping, CodesFindTheirLowestKey) {
    const POSCodeMapping map;
    std::set<Integer> codes;
    Long sum = 0; // of a table that nobody has mistyped
    for (Integer key = 1; key <= 105; ++key) {
        const Integer code = map.GetPositionCodeForKey(key);
        EXPECT_EQ(map.GetKeyIndex(code) == key, codes.insert(code).second);
        sum += code;
    }
    EXPECT_EQ(sum, 6523);
    EXPECT_EQ(map.GetKeyIndex(61), 93);
    EXPECT_EQ(map.GetKeyIndex(99), 102);
    EXPECT_EQ(map.GetKeyIndex(108), 90);
    EXPECT_EQ(map.GetKeyIndex(14), 0);
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
    EXPECT_FALSE(page.LoadPageFromFile(path.string())); // no such file
    EXPECT_FALSE(page.LoadPageFromFile(path.parent_path().string()));
    EXPECT_FALSE(load(255));
    EXPECT_EQ(page.GetByte(255), 5); // read before the end
    EXPECT_TRUE(load(300));
    EXPECT_EQ(page.GetByte(1), 2);
    EXPECT_EQ(page.GetByte(256), 6);
    EXPECT_EQ(page.GetByte(257), 0);
    EXPECT_EQ(page.GetByte(0), 0);
}

TEST(PosCodePage, KeyboardsPageIsReadAtItsAddressAndCompared) {
    struct Driver : FakeDriver {
        bool throws = false; // a host may throw out of the messages that a transfer posts
        std::int32_t QXCFG_ImageLoad() override {
            return throws ? throw std::runtime_error("host") : FakeDriver::QXCFG_ImageLoad();
        }
    } driver;
    struct NotedPointer : WaitPointer {
        int shown = 0;
        void Show() override { ++shown; }
        void Restore() override { --shown; }
    } pointer;
    Platform platform;
    platform.waitPointer = &pointer;
    QXKeyboardAccess access(driver);
    QXPosCodePage pages(platform);
    EXPECT_TRUE(pages.PagesAreEqual()); // two new ones
    EXPECT_FALSE(pages.KeyboardPage().IsEqualPage(nullptr));
    EXPECT_FALSE(pages.KeyboardPage().LoadPageFromKeyboard(nullptr));

    driver.requests = {{6, 0, 1}};  // of somebody else
    driver.memory[27776 + 255] = 1; // the last byte
    EXPECT_TRUE(pages.KeyboardPage().LoadPageFromKeyboard(&access));
    EXPECT_EQ(driver.requests, (std::vector<FakeDriver::Request>{{0, 27776, 256}}));
    EXPECT_FALSE(pages.PagesAreEqual());
    driver.throws = true;
    EXPECT_THROW(pages.KeyboardPage().LoadPageFromKeyboard(&access), std::runtime_error);
    EXPECT_EQ(pointer.shown, 0);
}

} // namespace
} // namespace qx::test
