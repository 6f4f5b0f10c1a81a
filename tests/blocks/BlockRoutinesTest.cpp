#include "qxcontrols/blocks/BlockRoutines.h"

#include "support/BlockRoundTrip.h"

namespace qx::test {
namespace {

TEST(SequenceSlots, EndAtTheFirstZeroUnlessFull) {
    const std::string block = Bytes("00*4 1E 9E 00 07 01 02 03 FF");
    KeySequence empty, ended, full, beyond;
    SetCodes(empty, {1});
    Long position = 0;
    for (KeySequence* sequence : {&empty, &ended, &full, &beyond})
        BytesToSequence(*sequence, position, 4, block);
    EXPECT_EQ(position, 16); // beyond the end of the block, too
    EXPECT_EQ(empty.Length(), 0);
    EXPECT_EQ(ended.KeyString(), " 30158");
    EXPECT_EQ(full.KeyString(), "  1  2  3255");
    EXPECT_EQ(beyond.Length(), 0);
}

TEST(SequenceSlots, AreFilledUpOrCut) {
    KeySequence sequence;
    EXPECT_EQ(SequenceToBytes(sequence, 3), Bytes("00*3"));
    SetCodes(sequence, {30, 0, 255});
    EXPECT_EQ(SequenceToBytes(sequence, 4), Bytes("1E 00 FF 00"));
    EXPECT_EQ(SequenceToBytes(sequence, 3), Bytes("1E 00 FF"));
    SetCodes(sequence, {1, 2, 3, -1});
    EXPECT_EQ(SequenceToBytes(sequence, 3), Bytes("01 02 03")); // the -1 is cut off
    EXPECT_EQ(SequenceToBytes(sequence, 4), "");
}

} // namespace
} // namespace qx::test
