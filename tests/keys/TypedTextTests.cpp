#include "qxcontrols/keys/TypedText.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace qx::test {

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
        // Shift is held as long as it is needed.
        {"us.qxl", "aAB-", {31, 159, 44, 31, 159, 50, 178, 172, 12, 140}},
        {"us.qxl", "_!", {44, 12, 140, 2, 130, 172}},
        {"german.qxl", "öÖß?", {40, 168, 44, 40, 168, 172, 12, 140, 44, 12, 140, 172}},
        // Digits are typed with Shift there.
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
