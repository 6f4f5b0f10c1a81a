#include "TextTable.h"

#include <gtest/gtest.h>

#include <numeric>
#include <stdexcept>
#include <tuple>
#include <vector>

namespace qx::test {
namespace {

using Rectangle = std::tuple<Single, Single, Single, Single>;

Rectangle RectangleOf(const QXKeyboardLayoutData& layout, Long key) {
    return {layout.KeyX(key), layout.KeyY(key), layout.KeyWidth(key), layout.KeyHeight(key)};
}

TEST(QXKeyboardLayoutData, ReadsTheLineOfAKey) {
    struct Row {
        std::string line;
        Rectangle rectangle; // left, top, width, height
        KEY_SUPPORT support;
        COLOR_SET color;
        std::string caption;
        std::string longCaption;
    };
    const Rectangle none{};
    const std::vector<Row> rows = {
        {"(40,100,60,70)21  Shift\\\\Left shift key",
         {100, 40, 60, 70},
         KEYMODE_PROG,
         COLOR_SET_2,
         "Shift",
         "Left shift key"},
        {"  ( 40 , -5 ,+60,2.5)12--A", {-5, 40, 60, 2}, KEYMODE_EXIST, COLOR_SET_3, "A", "A"},
        {"(1,2,3,4)", {2, 1, 3, 4}, KEYMODE_NONE, COLOR_SET_1, "", ""},
        {"(1,2,3,4)2", {2, 1, 3, 4}, KEYMODE_PROG, COLOR_SET_1, "", "Hex(17)"},
        {"", none, KEYMODE_NONE, COLOR_SET_1, "", ""},
        {"00  ", none, KEYMODE_NONE, COLOR_SET_1, "", "Hex(17)"},
        {"21\u2013\u2192\u00C4", none, KEYMODE_PROG, COLOR_SET_2, "\u00C4", "\u00C4"},
        {"\u00E41\u2013", none, KEYMODE_NONE, COLOR_SET_2, "", "Hex(17)"},
        {"39  A\\b\\\\", none, KEYMODE_NONE, COLOR_SET_1, "A\\b", ""},
        {"x2  \\\\Only long\\\\er", none, KEYMODE_NONE, COLOR_SET_3, "", "Only long\\\\er"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        const TableLayout table({{17, row.line}});
        EXPECT_EQ(RectangleOf(table.layout, 17), row.rectangle);
        EXPECT_EQ(table.layout.KeySupport(17), row.support);
        EXPECT_EQ(table.layout.KeyColor(17), row.color);
        EXPECT_EQ(table.layout.KeyCaption(17), row.caption);
        EXPECT_EQ(table.layout.KeyLongCaption(17), row.longCaption);
    }
}

TEST(QXKeyboardLayoutData, KeepsOnlyTheRectangleOfTheLayoutBefore) {
    TableLayout table({{17, "(1,2,3,4)21  A\\\\Key A"}});
    table.texts = {};
    ASSERT_TRUE(table.layout.OpenLayoutByID(1033));
    EXPECT_EQ(RectangleOf(table.layout, 17), (Rectangle{2, 1, 3, 4}));
    EXPECT_EQ(table.layout.KeySupport(17), KEYMODE_NONE);
    EXPECT_EQ(table.layout.KeyLongCaption(17), "");
}

TEST(QXKeyboardLayoutData, AnOpenThatFailsLeavesAllKeys) {
    TableLayout table({{0, "(1,2,3,4)21  A"}, {140, "(5,6,7,8)10  B"}});
    const auto failsWith = [&](const std::string& message) {
        const bool opened = table.layout.OpenLayoutByName("x") || table.layout.OpenLayoutByID(1);
        EXPECT_FALSE(opened);
        EXPECT_NE(table.layout.Error().find(message), std::string::npos) << table.layout.Error();
        EXPECT_EQ(table.layout.KeyCaption(0), "A");
        EXPECT_EQ(RectangleOf(table.layout, 140), (Rectangle{6, 5, 7, 8}));
        EXPECT_EQ(table.layout.NativeName(), "");
        EXPECT_TRUE(table.layout.Loaded());
    };
    table.texts[LayoutTextSource::kNativeName] = "Other";
    table.texts[1000] = "(9,9,9,9)10  Other";
    std::vector<std::string> malformed = {"(,1,2,3)",    "(1,2,3,x)",     "(1,2,3,4 5)",
                                          "(1,2,3)",     "(32768,1,1,1)", "(1,-32769,1,1)",
                                          "(1,2,3,nan)", "(1e999,2,3,4)"};
    const std::string whole = "(40,100,60,60)";
    for (std::size_t length = 1; length < whole.size(); ++length)
        malformed.push_back(whole.substr(0, length));
    for (const std::string& line : malformed) {
        SCOPED_TRACE(line);
        table.texts[1140] = line;
        failsWith("string 1140: position code 140");
    }
    table.onOpen = [] { throw std::runtime_error("the table is gone"); };
    failsWith("the table is gone");
    table.onOpen = [] { throw 4711; };
    failsWith("the layout could not be opened");
}

TEST(QXKeyboardLayoutData, FetchesTheNameAndThenTheKeysInOrder) {
    std::vector<Long> numbers(142);
    std::iota(numbers.begin(), numbers.end(), 999);
    numbers.front() = 3;
    TableLayout table;
    EXPECT_EQ(table.fetched, numbers);
    ASSERT_TRUE(table.layout.OpenLayoutByID(1033));
    EXPECT_EQ(table.fetched, numbers);
}

TEST(QXKeyboardLayoutData, WritesSequencesAsText) {
    TableLayout table(
        {{30, "00  A"}, {31, "00    \\\\Long"}, {128, "00  Far"}, {130, "00  Extra"}});
    QXKeyboardLayoutData& layout = table.layout;
    EXPECT_EQ(layout.ConvertKeyStringIntoTextString(" 30158"), "A ^A ");
    EXPECT_EQ(layout.ConvertKeyStringIntoTextStringUseUpcodes(" 30158", false), "A ");
    layout.SetUpCodePrefix("up:");
    EXPECT_EQ(layout.ConvertKeyStringIntoTextStringUseUpcodes(" 31159", true), "Long up:Long ");
    layout.SetShowUpcodes(false);
    EXPECT_EQ(layout.ConvertKeyStringIntoTextString(" 30158 30"), "A A ");
    // 32 and 0 have no name; 128 releases key 0, and 258 would release key 130; one remaining
    // character is not a code, but two are.
    EXPECT_EQ(layout.ConvertKeyStringIntoTextStringUseUpcodes(" 32128258999", true),
              " up: up:Extra up: ");
    EXPECT_EQ(layout.ConvertKeyStringIntoTextString(" 303"), "A ");
    EXPECT_EQ(layout.ConvertKeyStringIntoTextString(" 3030"), "A A ");
    EXPECT_EQ(layout.ConvertKeyStringIntoTextString(""), "");
}

TEST(QXKeyboardLayoutData, AnswersForUnknownKeysAndPaths) {
    TableLayout table({{0, "(1,2,3,4)21  A"}, {140, "(1,2,3,4)21  B"}});
    for (const Long key : {-1, 141}) {
        EXPECT_EQ(table.layout.KeyCaption(key), "");
        EXPECT_EQ(table.layout.KeySupport(key), KEYMODE_NONE);
        EXPECT_EQ(RectangleOf(table.layout, key), Rectangle{});
    }
    for (const auto& [given, kept] : std::map<std::string, std::string>{
             {"", "\\"}, {"C:\\layouts", "C:\\layouts\\"}, {"C:\\layouts\\", "C:\\layouts\\"}}) {
        table.layout.SetLayoutPath(given);
        EXPECT_EQ(table.layout.LayoutPath(), kept);
    }
}

} // namespace
} // namespace qx::test
