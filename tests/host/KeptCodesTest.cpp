#include "host/KeptCodes.h"

#include <gtest/gtest.h>

namespace qx::test {

TEST(KeptCodes, AreThoseThatAByteHoldsAndThatDoNotEndASequence) {
    const host::KeptCodes kept = host::KeepCodes("  0  1 30255256  2999-99 -1  3");
    EXPECT_EQ(kept.keyString, "  1 30255  2  3");
    EXPECT_EQ(kept.leftOut, (std::vector<Integer>{0, 256, 999, -99, -1}));
    EXPECT_EQ(host::KeepCodes("").keyString, "");
    EXPECT_EQ(host::KeepCodes(" 3015").keyString, " 30 15"); // the incomplete field is a code
}

} // namespace qx::test
