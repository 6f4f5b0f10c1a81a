// The routines with which every module block stores its sequences and switches.
//
// A sequence slot is a field of fixed length with one key code per byte; the first 0 byte ends the
// sequence, and a sequence that fills the slot has none.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace qx {

// Fills `sequence` from the slot of `length` bytes after the first `position` bytes of `block`, and
// moves `position` behind the slot. Bytes missing in a short block end the sequence. The numbers
// must not be negative.
void BytesToSequence(KeySequence& sequence, Long& position, Long length, std::string_view block);

// The slot of `length` bytes with the sequence, cut to its first `length` codes. If one of these is
// -1, the result is an empty text. Throws std::overflow_error for any other code outside 0 to 255.
[[nodiscard]] std::string SequenceToBytes(const KeySequence& sequence, Long length);

// A byte whose bit k is flag k.
[[nodiscard]] Byte PackBits(const std::array<bool, 8>& flags);

// Whether value and mask have a common bit.
[[nodiscard]] constexpr bool IsBitSet(Long mask, Integer value) {
    return (value & mask) != 0;
}

// One switch of a block: its bit, and the setting it represents.
template <typename Setting>
struct BitField {
    Integer offset; // of the byte, within the block
    Integer bit;    // 0 to 7, 0 the least significant
    Setting setting;
};

// Bits that are always written as `value` and never read: in the byte at `offset`, or in several
// consecutive ones.
struct FixedBits {
    Integer offset;
    Byte mask;
    Byte value;
    Integer count = 1;
};

// Proves at compile time that the tables of a block of `Size` bytes cover every bit exactly once:
// claim everything in the tables, then call IsExact.
template <std::size_t Size>
class BlockCoverage {
public:
    constexpr void Claim(Integer offset, Byte mask = 0xFF) {
        const auto byte = static_cast<std::size_t>(offset);
        if (offset < 0 || byte >= Size || (m_claimed[byte] & mask) != 0)
            m_faulty = true;
        else
            m_claimed[byte] = static_cast<Byte>(m_claimed[byte] | mask);
    }
    constexpr void Claim(const FixedBits& fixed) {
        for (Integer i = 0; i < fixed.count; ++i)
            Claim(static_cast<Integer>(fixed.offset + i), fixed.mask);
        m_faulty = m_faulty || (fixed.value & ~fixed.mask) != 0;
    }
    template <typename Setting>
    constexpr void Claim(const BitField<Setting>& field) {
        if (field.bit < 0 || field.bit > 7)
            m_faulty = true;
        else
            Claim(field.offset, static_cast<Byte>(1U << field.bit));
    }
    template <typename Row, std::size_t Rows>
    constexpr void Claim(const Row (&table)[Rows]) {
        for (const Row& row : table)
            Claim(row);
    }

    [[nodiscard]] constexpr bool IsExact() const {
        for (const Byte claimed : m_claimed)
            if (claimed != 0xFF)
                return false;
        return !m_faulty;
    }

private:
    std::array<Byte, Size> m_claimed{};
    bool m_faulty = false;
};

// Sets the fixed bits in the block; its other bits are unchanged.
void EncodeFixedBits(std::span<const FixedBits> table, std::string& block);

// Sets the table's bits in the block from `isOn(setting)`; the block's other bits are unchanged.
template <typename Setting, std::size_t Rows, typename IsOn>
void EncodeBits(const BitField<Setting> (&table)[Rows], std::string& block, IsOn isOn) {
    for (std::size_t offset = 0; offset < block.size(); ++offset) {
        std::array<bool, 8> flags{};
        for (std::size_t bit = 0; bit < 8; ++bit)
            flags[bit] = IsBitSet(1 << bit, static_cast<Byte>(block[offset]));
        for (const auto& field : table)
            if (static_cast<std::size_t>(field.offset) == offset)
                flags[static_cast<std::size_t>(field.bit)] = isOn(field.setting);
        block[offset] = static_cast<char>(PackBits(flags));
    }
}

// Calls `set(setting, isOn)` for every setting of the table, in the table's order. The block must
// contain all bytes of the table.
template <typename Setting, std::size_t Rows, typename Set>
void DecodeBits(const BitField<Setting> (&table)[Rows], std::string_view block, Set set) {
    for (const auto& field : table) {
        const auto byte = static_cast<Byte>(block[static_cast<std::size_t>(field.offset)]);
        set(field.setting, IsBitSet(1 << field.bit, byte));
    }
}

} // namespace qx
