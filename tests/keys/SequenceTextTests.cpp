#include "qxcontrols/keys/SequenceText.h"

#include "TextTable.h"
#include "qxcontrols/keys/KeySequence.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::test {
namespace {

using Codes = std::vector<Byte>;

const std::vector<std::string> kLayouts = {"french.qxl", "german.qxl", "spanish.qxl", "uk.qxl",
                                           "us.qxl"};

void OpenShipped(QXKeyboardLayoutData& layout, const std::string& name) {
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName(name)) << layout.Error();
}

TEST(SequenceText, ReadsKeysReleasesChordsAndCodes) {
    QXKeyboardLayoutData us;
    OpenShipped(us, "us.qxl");
    const std::vector<std::pair<std::string, Codes>> rows = {
        {"", {}},
        {" \t\r\n ", {}},
        {"A ^A", {31, 159}},
        {"  a\t^A\n", {31, 159}},
        {"{0} {30} {255} ^{30}", {0, 30, 255, 158}},
        {"Ctrl+C", {58, 48, 176, 186}},
        {"ctrl+ALT+Del ^Ctrl", {58, 60, 76, 204, 188, 186, 186}},
        {"Ctrl+Num+ Num++A ^Num+", {58, 106, 234, 186, 106, 31, 159, 234, 234}},
        {"Ctrl+{48} \"Ctrl\"+\"Num+\"", {58, 48, 176, 186, 58, 106, 234, 186}},
        {"\"Left control key\" ^\"left control key\"", {58, 186}},
        {"{58}+\"Space bar\"", {58, 61, 189, 186}},
        // A key can also be named by its character with Shift.
        {"Ctrl++ Ctrl+++A ! ^!", {58, 13, 141, 186, 58, 13, 31, 159, 141, 186, 2, 130}},
        {"Ctrl+\\ |", {58, 29, 157, 186, 29}},
    };
    for (const auto& [text, codes] : rows)
        EXPECT_EQ(ParseSequenceText(text, us), codes) << text;

    QXKeyboardLayoutData french;
    OpenShipped(french, "french.qxl"); // has keys called ^ and "
    EXPECT_EQ(ParseSequenceText("^ ^^ \" ^\" Maj+\" \"\"\"\" ÉCHAP", french),
              (Codes{27, 155, 4, 132, 44, 4, 132, 172, 4, 110}));
}

TEST(SequenceText, ReportsFaults) {
    QXKeyboardLayoutData us;
    OpenShipped(us, "us.qxl");
    TableLayout table({{1, "00  Go\\\\First"},
                       {2, "00  Go\\\\Second"},
                       {3, "00  gO"},
                       {4, "00  xx"},
                       {5, "00  XX"},
                       {130, "00  Go"},
                       {131, "00  Top"}});
    using Kind = TextFaultKind;
    struct Row {
        const QXKeyboardLayoutData& layout;
        std::string text;
        std::size_t position;
        TextFault fault;
    };
    const std::string ctrl = R"({58} "Ctrl" (Left control key), {64} "RCtrl" (Right control key))";
    const std::string numEnter = R"({108} "NumEnter" (Number pad enter))";
    const std::vector<Row> rows = {
        {us, "A Ctl", 2, {Kind::NoKeyCalledBut, {"3", R"("Ctl")", ctrl}}},
        {us, "Ctl", 0, {Kind::NoKeyCalledBut, {"1", R"("Ctl")", ctrl}}},
        {us, "Foo", 0, {Kind::NoKeyCalled, {"1", R"("Foo")"}}},
        {us, "\"", 0, {Kind::QuoteNotClosed, {"1"}}},
        {us, "A+\"\"\"\"", 2, {Kind::NoKeyCalled, {"3", R"("""")"}}},
        {us, "A+\"\"\"", 2, {Kind::QuoteNotClosed, {"3"}}},
        {us, "{", 0, {Kind::NoKeyCalled, {"1", R"("{")"}}},
        {us, "A ^NumEntr A", 3, {Kind::NoKeyCalledBut, {"4", R"("NumEntr")", numEnter}}},
        {us, "é é", 0, {Kind::NoKeyCalled, {"1", R"("é")"}}},
        {us, "A {256}", 2, {Kind::NotACode, {"3", "{256}"}}},
        {us, "{99999999999}", 0, {Kind::NotACode, {"1", "{99999999999}"}}},
        {us, "{30}{", 4, {Kind::SpaceOrPlusMissing, {"5", "{30}"}}},
        {us, "{158}+A", 0, {Kind::NoKeyOfNumber, {"1", "158"}}},
        {us, "^{158}", 1, {Kind::NoKeyOfNumber, {"2", "158"}}},
        {us, "Ctrl+", 4, {Kind::KeyAfterPlus, {"5"}}},
        {us, "Ctrl+Foo", 5, {Kind::NoKeyCalled, {"6", R"("Foo")"}}},
        {us, "Foo+Ctrl", 0, {Kind::NoKeyCalled, {"1", R"("Foo")"}}},
        {us, "\"A\"B", 3, {Kind::SpaceOrPlusMissing, {"4", "A"}}},
        {us, "^\"A\"B", 4, {Kind::SpaceMissing, {"5", "A"}}},
        {us, "^Ctrl+C", 1, {Kind::NoKeyCalledBut, {"2", R"("Ctrl+C")", ctrl}}},
        {us, "\"Ctrl", 0, {Kind::QuoteNotClosed, {"1"}}},
        {us, "A\xFF", 0, {Kind::NoKeyCalledBut, {"1", "\"A\xEF\xBF\xBD\"", R"({31} "A" (Key A))"}}},
        {us, "^", 0, {Kind::NoKeyCalled, {"1", R"("^")"}}},
        {us, "X2", 0, {Kind::KeyNotPressable, {"1", "X2", "128"}}},
        {table.layout,
         "Go",
         0,
         {Kind::SeveralKeys, {"1", R"("Go")", R"({1} "Go" (First), {2} "Go" (Second))"}}},
        {table.layout,
         "Xx",
         0,
         {Kind::SeveralKeys, {"1", R"("Xx")", R"({4} "xx" (xx), {5} "XX" (XX))"}}},
        {table.layout, "top", 0, {Kind::KeyNotPressable, {"1", "top", "131"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        try {
            (void)ParseSequenceText(row.text, row.layout);
            ADD_FAILURE() << "no error";
        } catch (const SequenceTextError& error) {
            EXPECT_EQ(error.Position(), row.position);
            EXPECT_EQ(error.Fault(), row.fault) << error.what();
        }
    }
    EXPECT_EQ(WordsOf(rows[0].fault),
              R"(character 3: no key is called "Ctl"; the nearest: )" + ctrl);
    EXPECT_EQ(ParseSequenceText("Second gO", table.layout), (Codes{2, 3}));
}

void ExpectRoundTrip(const Codes& codes, const QXKeyboardLayoutData& layout) {
    const std::string text = SequenceToText(codes, layout);
    ASSERT_EQ(ParseSequenceText(text, layout), codes) << text;
    ASSERT_FALSE(text.ends_with(' '));
}

void ExpectRoundTrips(const QXKeyboardLayoutData& layout) {
    std::mt19937 random(1);
    Codes codes(256);
    for (int round = 0; round < 20; ++round) {
        for (std::size_t i = 0; i < codes.size(); ++i)
            codes[i] = static_cast<Byte>(round == 0 ? i : random());
        ExpectRoundTrip(codes, layout);
    }
}

TEST(SequenceText, RoundTripsInEveryShippedLayout) {
    for (const std::string& name : kLayouts) {
        SCOPED_TRACE(name);
        QXKeyboardLayoutData layout;
        OpenShipped(layout, name);
        ExpectRoundTrips(layout);
        // The names written by the layout data itself.
        for (const int added : {0, 128}) {
            Codes codes;
            KeySequence sequence;
            for (Byte key = 0; key < 128; ++key)
                if (!layout.KeyCaption(key).empty()) {
                    codes.push_back(static_cast<Byte>(key + added));
                    sequence.AddByte(codes.back());
                }
            const std::string text =
                layout.ConvertKeyStringIntoTextStringUseUpcodes(sequence.KeyString(), true);
            EXPECT_EQ(ParseSequenceText(text, layout), codes) << text;
        }
    }
}

TEST(SequenceText, RoundTripsNamesThatLookLikeGrammar) {
    const std::vector<std::string> names = {
        "A",        "^A",       "+",       "^",         "^^",    "++",       "A+B",     "B",
        "{",        "{30}",     "{30}+A",  "}",         "\"",    "\"\"",     "\"A\"",   "\"A",
        "A\"",      "Caps",     "Lock",    "Caps Lock", "^A B",  "Caps A+",  "caps",    " C",
        "\tC",      "C",        "\"A\" B", "Twice",     "Twice", "^\"A\" B", "up",      "up A",
        "\xC3\x9C", "\xC3\xBC", "a\tb",    "^Caps",     "Q",     "Q R",      "^\"Q\" B"};
    std::map<Long, std::string> lines;
    for (const std::string& name : names) {
        const auto key = static_cast<Long>(lines.size());
        lines[key] = "00  " + name + (key % 2 == 0 ? "\\\\" + names[lines.size() / 2] : "");
    }
    TableLayout table(lines);
    for (const std::string prefix : {"^", "", " ", "+", "\"", "{", "{3", "up ", "A", "^A "}) {
        SCOPED_TRACE("release prefix <" + prefix + ">");
        table.layout.SetUpCodePrefix(prefix);
        // All pairs of codes: a name must not absorb the next one.
        Codes codes;
        for (Byte key = 0; key < names.size(); ++key)
            codes.insert(codes.end(), {key, static_cast<Byte>(key + 128)});
        Codes pairs;
        for (const Byte first : codes)
            for (const Byte second : codes)
                pairs.insert(pairs.end(), {first, second});
        ExpectRoundTrip(pairs, table.layout);
    }
}

TEST(SequenceText, PrefersNamesAndReadsThemUnquoted) {
    TableLayout table({{0, "00  Caps Lock On"},
                       {1, "00  A"},
                       {2, "00  Caps Lock"},
                       {3, "00  Two"},
                       {4, "00  Two"},
                       {5, "00  say \""},
                       {7, "00  Caps"},
                       {8, "00  \\\\Lock"}});
    EXPECT_EQ(SequenceToText(Codes{1, 129, 2, 130, 3, 132, 5, 6, 7, 135, 8}, table.layout),
              "A ^A \"Caps Lock\" ^\"Caps Lock\" {3} {132} \"say \"\"\" {6} \"Caps\" ^\"Caps\" "
              "Lock");
    EXPECT_EQ(SequenceToText({}, table.layout), "");
    EXPECT_EQ(ParseSequenceText("Caps Lock On ^Caps Lock \"Caps\" Lock A Caps", table.layout),
              (Codes{0, 130, 7, 8, 1, 7}));
}

} // namespace
} // namespace qx::test
