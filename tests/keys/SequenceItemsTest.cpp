#include "qxcontrols/keys/SequenceItems.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"

#include <gtest/gtest.h>

#include <random>

namespace qx::test {

namespace {

class SequenceItemsTest : public testing::Test {
protected:
    SequenceItemsTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
    }
    std::string Text(const std::string& sequence) {
        return SequenceItems(layout).Text(ParseSequenceText(sequence, layout));
    }

    QXKeyboardLayoutData layout;
};

} // namespace

TEST_F(SequenceItemsTest, ReadAsPeopleSayThem) {
    const char* const rows[][2] = {
        {"1 ^1 0 ^0 Enter ^Enter", "10 Enter"},
        {"Ctrl C ^C ^Ctrl", "Ctrl+C"},
        {"Ctrl C ^C V ^V ^Ctrl", "Ctrl+(C V)"},
        {"Ctrl Alt Del ^Del ^Alt ^Ctrl", "Ctrl+Alt+Del"},
        {"Shift T ^T ^Shift I ^I L ^L L ^L", "Till"},
        {"Shift 1 ^1 Tab ^Tab ^Shift", "Shift+(1 Tab)"},
        {"A ^A Space ^Space B ^B", "a\u2423b"},
        {"Space ^Space", "Space"},
        {"Shift ^Shift", "Shift"},
        {"Enter", "Enter\u2193"},
        {"Ctrl C ^Ctrl ^C", "Ctrl\u2193 C\u2193 Ctrl\u2191 C\u2191"},
        {"Ctrl C ^C", "Ctrl\u2193 c"},
        {"{14} {142}", "{14}"},
        {"", ""},
    };
    for (const auto& [sequence, expected] : rows)
        EXPECT_EQ(Text(sequence), expected) << sequence;
}

TEST_F(SequenceItemsTest, HaveEveryCodeOnce) {
    const SequenceItems items(layout);
    std::mt19937 random(7);
    std::vector<Byte> codes;
    for (int round = 0; round < 2000; ++round) {
        codes.clear();
        static constexpr Byte kKeys[] = {44, 58, 60, 2, 43};
        for (auto length = random() % 12; length > 0; --length)
            codes.push_back(
                static_cast<Byte>(kKeys[random() % 5] + (random() % 2 != 0 ? kRelease : 0)));
        std::size_t next = 0;
        for (const SequenceItem& item : items.Of(codes)) {
            ASSERT_EQ(item.first, next);
            ASSERT_GT(item.count, 0U);
            ASSERT_FALSE(item.text.empty());
            next += item.count;
        }
        ASSERT_EQ(next, codes.size());
    }
}

} // namespace qx::test
