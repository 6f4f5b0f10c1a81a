#include "qxcontrols/readers/BlockRoutines.h"

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
    EXPECT_EQ(position, 16); // also behind what the block lacks
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

TEST(Switches, OfEveryByteAndBitLieWhereTheTableSays) {
    for (Integer offset = 0; offset < 3; ++offset)
        for (Integer bit = 0; bit < 8; ++bit) {
            const BitField<char> table[] = {{offset, bit, 'x'}};
            std::string block = Bytes("A5*3");
            std::string expected = block;
            for (const bool isOn : {true, false}) {
                EncodeBits(table, block, [&](char) { return isOn; });
                int mask = 1 << bit;
                char& byte = expected[static_cast<std::size_t>(offset)];
                byte = static_cast<char>(isOn ? byte | mask : byte & ~mask);
                EXPECT_EQ(block, expected) << "byte " << offset << " bit " << bit;
                DecodeBits(table, block, [&](char, bool read) { EXPECT_EQ(read, isOn); });
            }
        }
}

// The tables of all blocks are proved complete by this; it must not prove what is wrong.
TEST(Coverage, FindsGapsAndOverlaps) {
    const auto isExact = [](std::initializer_list<FixedBits> claims) {
        BlockCoverage<2> coverage;
        for (const FixedBits& fixed : claims)
            coverage.Claim(fixed);
        return coverage.IsExact();
    };
    EXPECT_TRUE(isExact({{0, 0xFF, 0x00, 2}}));
    EXPECT_TRUE(isExact({{1, 0xF0, 0xC0}, {0, 0xFF, 0xFF}, {1, 0x0F, 0x00}}));
    EXPECT_FALSE(isExact({{0, 0xFF, 0x00}, {1, 0xFE, 0x00}}));                  // a gap
    EXPECT_FALSE(isExact({{0, 0xFF, 0x00, 2}, {1, 0x01, 0x00}}));               // claimed twice
    EXPECT_FALSE(isExact({{0, 0xFF, 0x00, 3}}));                                // beyond the end
    EXPECT_FALSE(isExact({{0, 0xF0, 0x01}, {0, 0x0F, 0x00}, {1, 0xFF, 0x00}})); // outside its mask
}

} // namespace
} // namespace qx::test
