// The models of the POS module: blocks, the key mapping, code pages.
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "qxcontrols/pos/QXPosCodePage.h"
#include "support/TestKeyboard.h"

#include <filesystem>
#include <fstream>
#include <set>
#include <stdexcept>

namespace qx::test {
namespace {

TEST(PosBlocks, KeysAreAddedAndRemovedAtTheEnd) {
    POSBlock block;
    EXPECT_EQ(block.GetLast(), 0);
    block.CleanLast(); // nothing to remove
    for (Integer key = 1; key <= 106; ++key)
        block.AddKey(key);
    EXPECT_EQ(block.BlockSize(), 105); // full
    EXPECT_EQ(block.GetLast(), 105);
    EXPECT_FALSE(block.HasKey(106));

    block.Clean();
    block.AddKey(7);
    block.AddKey(9);
    block.CleanLast();
    EXPECT_EQ(block.GetKey(1), 7);
    EXPECT_EQ(block.GetKey(2), 0);
    EXPECT_EQ(block.GetKey(0), 0);
    EXPECT_FALSE(block.HasKey(9));
}

TEST(PosBlocks, KeyboardCountsFindsCopiesAndCleans) {
    POSKeyboard keyboard;
    EXPECT_THROW(static_cast<void>(keyboard.Block(0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(keyboard.Block(106)), std::out_of_range);
    for (const Integer slot : {Integer{105}, Integer{20}}) {
        keyboard.Block(slot).AddKey(20);
        keyboard.Block(slot).Sequence().AddByte(30);
        keyboard.Block(slot).SetBlockID(slot);
        keyboard.Block(slot).SetColorID(3);
    }
    EXPECT_EQ(keyboard.FindBlockForKey(20), 20); // the lower slot of two
    EXPECT_EQ(keyboard.FindBlockForKey(21), 0);
    EXPECT_EQ(keyboard.BlockNum(), 0); // not yet counted

    POSKeyboard copy;
    copy.Block(1).AddKey(1);
    copy.CopyContent(&keyboard);
    copy.CopyContent(nullptr);
    EXPECT_EQ(copy.BlockNum(), 2);
    EXPECT_EQ(copy.Block(1).BlockSize(), 0);
    EXPECT_EQ(copy.Block(105).Sequence().KeyString(), " 30");

    copy.CleanAllBlocks();
    EXPECT_EQ(copy.BlockNum(), 0);
    EXPECT_EQ(copy.Block(105).BlockSize(), 0);
    EXPECT_EQ(copy.Block(105).Sequence().Length(), 0);
    EXPECT_EQ(copy.Block(105).BlockID(), 105);
    EXPECT_EQ(copy.Block(105).ColorID(), 3);
    EXPECT_EQ(keyboard.Block(105).BlockSize(), 1); // the copy is one
}

TEST(PosCodeMapping, CodesOfTheGridFindTheirLowestKey) {
    const POSCodeMapping map;
    std::set<Integer> codes;
    Long sum = 0; // of a table that nobody has mistyped
    for (Integer key = 1; key <= 105; ++key) {
        const Integer code = map.GetPositionCodeForKey(key);
        if (codes.insert(code).second) {
            EXPECT_EQ(map.GetKeyIndex(code), key);
        }
        sum += code;
    }
    EXPECT_EQ(codes.size(), 101U);
    EXPECT_EQ(sum, 6523);
    EXPECT_EQ(map.GetPositionCodeForKey(14), 55);
    EXPECT_EQ(map.GetKeyIndex(61), 93);
    EXPECT_EQ(map.GetKeyIndex(99), 102);
    EXPECT_EQ(map.GetKeyIndex(108), 90);
    EXPECT_EQ(map.GetKeyIndex(14), 0);
    EXPECT_THROW(static_cast<void>(map.GetPositionCodeForKey(0)), std::out_of_range);
    EXPECT_THROW(static_cast<void>(map.GetPositionCodeForKey(106)), std::out_of_range);
}

class CodePageFile : public testing::Test {
protected:
    void SetUp() override {
        const auto* test = testing::UnitTest::GetInstance()->current_test_info();
        path = std::filesystem::path(testing::TempDir()) / (std::string(test->name()) + ".page");
    }
    void TearDown() override { std::filesystem::remove(path); }

    static char ByteAt(int position) { return static_cast<char>(position % 251 + 1); }

    // A file of `size` bytes, none of them 0.
    void Write(int size) {
        std::ofstream file(path, std::ios::binary);
        for (int i = 1; i <= size; ++i)
            file.put(ByteAt(i));
    }

    std::filesystem::path path;
};

TEST_F(CodePageFile, TakesTheFirst256BytesAndKeepsWhatAShortFileHas) {
    PosCodePage page;
    EXPECT_FALSE(page.LoadPageFromFile(path.string())); // no such file
    EXPECT_FALSE(page.LoadPageFromFile(path.parent_path().string()));
    Write(255);
    EXPECT_FALSE(page.LoadPageFromFile(path.string()));
    EXPECT_EQ(page.GetByte(255), 5);
    EXPECT_EQ(page.GetByte(256), 0);
    Write(300);
    EXPECT_TRUE(page.LoadPageFromFile(path.string()));
    EXPECT_EQ(page.GetByte(1), 2);
    EXPECT_EQ(page.GetByte(256), 6);
    EXPECT_EQ(page.GetByte(257), 0);
    EXPECT_EQ(page.GetByte(0), 0);
}

class NotedPointer : public WaitPointer {
public:
    void Show() override { ++shown; }
    void Restore() override { --shown; }
    int shown = 0;
};

TEST_F(CodePageFile, ComparesWithTheKeyboardsPage) {
    TestKeyboard keyboard({{MODULE_MAGNET_CONFIG, 4096}});
    NotedPointer pointer;
    Platform platform;
    platform.waitPointer = &pointer;
    QXPosCodePage pages(platform);
    EXPECT_TRUE(pages.PagesAreEqual()); // two new ones
    EXPECT_FALSE(pages.KeyboardPage().IsEqualPage(nullptr));
    EXPECT_FALSE(pages.KeyboardPage().LoadPageFromKeyboard(nullptr));

    Write(256);
    ASSERT_TRUE(pages.FilePage().LoadPageFromFile(path.string()));
    for (int i = 1; i <= 256; ++i)
        keyboard.driver.memory[static_cast<std::size_t>(27776 + i - 1)] = ByteAt(i);
    keyboard.driver.requests = {{6, 0, 1}}; // of somebody else
    EXPECT_TRUE(pages.KeyboardPage().LoadPageFromKeyboard(&keyboard.access));
    EXPECT_EQ(keyboard.driver.requests, (std::vector<FakeDriver::Request>{{0, 27776, 256}}));
    EXPECT_TRUE(pages.PagesAreEqual());
    EXPECT_EQ(pointer.shown, 0);

    keyboard.driver.memory[27776 + 255] = 1;
    EXPECT_TRUE(pages.KeyboardPage().LoadPageFromKeyboard(&keyboard.access));
    EXPECT_FALSE(pages.PagesAreEqual());
}

// A host may throw out of the messages that a transfer posts.
TEST(PosCodePage, WaitPointerIsRestoredWhenTheTransferThrows) {
    struct ThrowingDriver : FakeDriver {
        std::int32_t QXCFG_ImageLoad() override { throw std::runtime_error("host"); }
    } driver;
    QXKeyboardAccess access(driver);
    NotedPointer pointer;
    Platform platform;
    platform.waitPointer = &pointer;
    PosCodePage page(platform);
    EXPECT_THROW(page.LoadPageFromKeyboard(&access), std::runtime_error);
    EXPECT_EQ(pointer.shown, 0);
}

} // namespace
} // namespace qx::test
