#include "qxcontrols/readers/BlockRoutines.h"

#include <algorithm>

namespace qx {

void BytesToSequence(KeySequence& sequence, Long& position, Long length, std::string_view block) {
    sequence.Clear();
    const auto start = std::min(static_cast<std::size_t>(position), block.size());
    for (const char byte : block.substr(start, static_cast<std::size_t>(length))) {
        if (byte == 0)
            break;
        sequence.AddByte(static_cast<Byte>(byte));
    }
    position += length;
}

std::string SequenceToBytes(const KeySequence& sequence, Long length) {
    std::string slot;
    slot.reserve(static_cast<std::size_t>(length));
    const Long codes = std::min<Long>(sequence.Length(), length);
    for (Long i = 1; i <= codes; ++i) {
        const Integer code = sequence.GetPositionCode(static_cast<Integer>(i));
        if (code == -1)
            return {};
        slot += static_cast<char>(static_cast<Byte>(code));
    }
    slot.resize(static_cast<std::size_t>(length), '\0');
    return slot;
}

Byte PackBits(const std::array<bool, 8>& flags) {
    unsigned byte = 0;
    for (std::size_t k = 0; k < flags.size(); ++k)
        if (flags[k])
            byte |= 1U << k;
    return static_cast<Byte>(byte);
}

void EncodeFixedBits(std::span<const FixedBits> table, std::string& block) {
    for (const FixedBits& fixed : table)
        for (Integer i = 0; i < fixed.count; ++i) {
            char& byte = block[static_cast<std::size_t>(fixed.offset + i)];
            byte = static_cast<char>((static_cast<Byte>(byte) & ~fixed.mask) | fixed.value);
        }
}

} // namespace qx
