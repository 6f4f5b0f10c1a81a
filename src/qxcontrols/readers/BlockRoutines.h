// The routines by which every module block stores its sequences and its switches.
//
// A sequence slot is a field of fixed length with one key code a byte; the first 0 byte ends the
// sequence, and a sequence that fills the slot has none.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace qx {

// Fills `sequence` from the slot of `length` bytes that follows the first `position` bytes of
// `block`, and moves `position` behind the slot. What a short block lacks reads as ended.
void BytesToSequence(KeySequence& sequence, Long& position, Long length, std::string_view block);

// The slot of `length` bytes that holds the sequence, cut to its first `length` codes. A code -1
// among these gives the empty text instead.
[[nodiscard]] std::string SequenceToBytes(const KeySequence& sequence, Long length);

// A byte whose bit k is flag k.
[[nodiscard]] Byte PackBits(const std::array<bool, 8>& flags);

// Whether value and mask share a bit.
[[nodiscard]] constexpr bool IsBitSet(Long mask, Integer value) {
    return (value & mask) != 0;
}

// One switch of a block: where it lies, and the setting that it stands for.
template <typename Setting>
struct BitField {
    Integer offset; // of the byte, within the block
    Integer bit;    // 0 to 7, 0 the least significant
    Setting setting;
};

// Whether no two rows of the table share a bit and all lie in bytes 0 to size - 1.
template <typename Setting>
constexpr bool AreDistinct(std::span<const BitField<Setting>> table, Integer size) {
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i].offset < 0 || table[i].offset >= size || table[i].bit < 0 || table[i].bit > 7)
            return false;
        for (std::size_t k = 0; k < i; ++k)
            if (table[i].offset == table[k].offset && table[i].bit == table[k].bit)
                return false;
    }
    return true;
}

// Sets the table's bits in the block from `isOn(setting)`; the block's other bits stay.
template <typename Setting, typename IsOn>
void EncodeBits(std::span<const BitField<Setting>> table, std::string& block, IsOn isOn) {
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

// Hands every setting of the table to `set(setting, isOn)`, in the table's order.
template <typename Setting, typename Set>
void DecodeBits(std::span<const BitField<Setting>> table, std::string_view block, Set set) {
    for (const auto& field : table) {
        const auto byte = static_cast<Byte>(block[static_cast<std::size_t>(field.offset)]);
        set(field.setting, IsBitSet(1 << field.bit, byte));
    }
}

} // namespace qx
