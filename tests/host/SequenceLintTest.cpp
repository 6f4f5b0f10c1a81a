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

} // namespace qx::test
