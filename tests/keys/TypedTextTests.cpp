#include "qxcontrols/keys/TypedText.h"

#include "qxcontrols/keys/KeyCharacters.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace qx::test {

TEST(TypedText, CaptionsShowTheCharactersOfAKey) {
    struct Row {
        const char* caption;
        const char* longCaption;
        std::u16string plain, shifted;
        bool isPlainDead, isShiftedDead;
    };
    const Row rows[] = {
        {"A", "Key A", u"a", u"A", false, false},
        {"1", "Key 1 !", u"1", u"!", false, false},
        {" \\ ", "Key \\ |", u"\\", u"|", false, false},
        {"^", "Dead \u25CC^ \u25CC\u00A8", u"^", u"\u00A8", true, true},
        {"'", "Dead \u25CC'", u"'", u"", true, false},
        {"\u25CC", "\u25CC", u"\u25CC", u"", false, false}, // the circle itself
        {"1", "Key one !", u"1", u"", false, false},
        {"1", "1 !", u"1", u"!", false, false},
        {"1", "1", u"1", u"", false, false},
        {"1", "Key 1 !!", u"1", u"", false, false},
        {"\U0001F600", "Key \U0001F600 \U0001F601", u"\U0001F600", u"\U0001F601", false, false},
        {"F1", "Key F1 !", u"", u"", false, false},
        {"", "Key  !", u"", u"", false, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.longCaption);
        const KeyCharacters characters = CharactersOf(row.caption, row.longCaption);
        EXPECT_EQ(characters.plain, row.plain);
        EXPECT_EQ(characters.shifted, row.shifted);
        EXPECT_EQ(characters.isPlainDead, row.isPlainDead);
        EXPECT_EQ(characters.isShiftedDead, row.isShiftedDead);
    }
}

TEST(TypedText, IsTypedByTheKeysOfTheLayout) {
    struct Row {
        const char* layout;
        const char* text;
        std::vector<Byte> codes;
    };
    const Row rows[] = {
        {"us.qxl", "", {}},
        {"us.qxl", "042", {11, 139, 5, 133, 3, 131}},
        {"us.qxl", "z y", {46, 174, 61, 189, 22, 150}},
        {"german.qxl", "z y", {22, 150, 61, 189, 46, 174}},
        // Shift is held only while it is needed.
        {"us.qxl", "aAB-", {31, 159, 44, 31, 159, 50, 178, 172, 12, 140}},
        {"us.qxl", "_!", {44, 12, 140, 2, 130, 172}},
        {"german.qxl", "öÖß?", {40, 168, 44, 40, 168, 172, 12, 140, 44, 12, 140, 172}},
        {"us.qxl", "\\|+", {29, 157, 44, 29, 157, 13, 141, 172}},
        {"uk.qxl",
         "\\|#~\"@",
         {45, 173, 44, 45, 173, 172, 42, 170, 44, 42, 170, 3, 131, 41, 169, 172}},
        {"german.qxl", "#'<>", {42, 170, 44, 42, 170, 172, 45, 173, 44, 45, 173, 172}},
        {"spanish.qxl", "\xC3\xA7\xC3\x87.", {42, 170, 44, 42, 170, 172, 54, 182}},
        // Dead keys need the space bar without Shift.
        {"german.qxl",
         "^a`\xC2\xB0",
         {1, 129, 61, 189, 31, 159, 44, 13, 141, 172, 61, 189, 44, 1, 129, 172}},
        {"spanish.qxl",
         "`^\xC2\xB4",
         {27, 155, 61, 189, 44, 27, 155, 172, 61, 189, 41, 169, 61, 189}},
        {"french.qxl", "^\xC2\xB5*", {27, 155, 61, 189, 44, 42, 170, 172, 42, 170}},
        // Digits are typed with Shift on this layout.
        {"french.qxl", "10&é", {44, 2, 130, 11, 139, 172, 2, 130, 3, 131}},
    };
    for (const Row& row : rows) {
        QXKeyboardLayoutData layout;
        layout.SetLayoutPath(QX_LAYOUTS);
        ASSERT_TRUE(layout.OpenLayoutByName(row.layout));
        EXPECT_EQ(CodesThatType(row.text, layout), row.codes) << row.layout << " " << row.text;
    }
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName("us.qxl"));
    for (const char* text : {"1€", "\t", "é", "1\xFF"})
        EXPECT_THROW((void)CodesThatType(text, layout), std::invalid_argument) << text;
}

} // namespace qx::test
