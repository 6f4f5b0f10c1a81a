#include "host/SequenceLint.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <gtest/gtest.h>

namespace qx::test {

using host::LintSequence;
using host::SequenceWarning;
using enum host::SequenceWarningKind;

using Codes = std::vector<Integer>;
using Warnings = std::vector<SequenceWarning>;

TEST(SequenceLint, FollowsWhichKeysAreDown) {
    const auto lint = [](const Codes& codes) { return LintSequence(codes, nullptr); };
    EXPECT_EQ(lint({44, 31, 159, 172, 43, 171}), Warnings());
    EXPECT_EQ(lint({31, 31, 159}), Warnings()) << "a key that repeats";
    EXPECT_EQ(lint({44, 31, 159}), (Warnings{{NeverReleased, 44, 0}}));
    EXPECT_EQ(lint({31, 159, 31}), (Warnings{{NeverReleased, 31, 2}})) << "the second press";
    EXPECT_EQ(lint({159, 31}), (Warnings{{NeverPressed, 31, 0}, {NeverReleased, 31, 1}}));
    EXPECT_EQ(lint({31, 159, 159}), (Warnings{{NeverPressed, 31, 2}}));
    EXPECT_EQ(lint({1, 129, 127, 255}), Warnings()) << "the first and the last key";
}

TEST(SequenceLint, KnowsTheKeysOfTheLayout) {
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName("us.qxl"));
    // 14 is not a key of the layout. 130 is one, but its code releases key 2.
    EXPECT_EQ(LintSequence(Codes{14, 142}, &layout), (Warnings{{NotInLayout, 14, 0}}));
    EXPECT_EQ(LintSequence(Codes{130}, &layout), (Warnings{{KeyAbove127, 2, 0}}));
    EXPECT_EQ(LintSequence(Codes{2, 130}, &layout), Warnings());
    EXPECT_EQ(LintSequence(Codes{200}, &layout), (Warnings{{NeverPressed, 72, 0}}));
}

// The POS keys 1 and 2 are the keys 110 and 112; the POS keys 93 to 95 are key 61.
TEST(SequenceLint, FindsSequencesThatAnotherModuleOverrides) {
    using Overridden = std::vector<std::pair<std::string, std::string>>; // by the second
    const std::string block = R"("pos": {"blocks": [{"slot": 1, "blockId": 1, "colorId": 0,
        "keys": [1, 2, 16, 17], "sequence": )";
    const std::string blocks = R"("pos": {"blocks": [{"slot": 93, "blockId": 1, "colorId": 0,
        "keys": [93], "sequence": "A ^A"}, {"slot": 95, "blockId": 2, "colorId": 1, "keys": [95],
        "sequence": "B ^B"}]})";
    const auto keys = [](const std::string& section, int key) {
        return "\"" + section + R"(": {"keys": [{"positionCode": )" + std::to_string(key) +
               R"(, "sequence": "Esc ^Esc"}]})";
    };
    struct Row {
        std::string sections;
        Overridden expected;
    };
    const Row rows[] = {
        {keys("freeProgKeys", 112) + "," + block + R"("A ^A"}]})",
         {{"Free keys › Key 112 (F1)", "POS keys › Key 1 (Esc)"}}},
        {keys("freeProgKeys", 112) + "," + block + R"(""}]})", {}},
        {keys("freeProgKeys", 113) + "," + block + R"("A ^A"}]})", {}},
        {keys("freeProgKeys", 61) + "," + blocks,
         {{"Free keys › Key 61 (Space)", "POS keys › Key 93 (Space)"}}},
        {keys("freeProgKeys", 112) + "," + keys("funcKeys4610", 112),
         {{"Function keys 4610 › Key 112 (F1)", "Free keys › Key 112 (F1)"}}},
        {keys("funcKeys4620", 112) + "," + keys("funcKeys4610", 113), {}},
    };
    QXKeyboardLayoutData layout;
    layout.SetLayoutPath(QX_LAYOUTS);
    ASSERT_TRUE(layout.OpenLayoutByName("us.qxl"));
    for (const Row& row : rows) {
        SCOPED_TRACE(row.sections);
        host::Configuration configuration({}, &layout, nullptr, host::LayoutUse::Captions);
        const auto sections = configuration.Read(host::ConfigurationDocument::Parse(
            R"({"format": "qx-configuration", "version": 1, )" + row.sections + "}", "test.json"));
        Overridden found;
        for (const host::SettingWarning& each : Lint(configuration, sections, &layout)) {
            EXPECT_EQ(each.warning.kind, NeverSent);
            found.emplace_back(ToText(each.name), ToText(each.warning.by));
        }
        EXPECT_EQ(found, row.expected);
    }
}

} // namespace qx::test
