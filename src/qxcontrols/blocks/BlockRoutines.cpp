#include "qxcontrols/blocks/BlockRoutines.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

namespace qx {

void BytesToSequence(KeySequence& sequence, Long& position, Long length, std::string_view block) {
    const auto start = std::min(static_cast<std::size_t>(position), block.size());
    const std::string_view slot = block.substr(start, static_cast<std::size_t>(length));
    sequence.SetBytes(slot.substr(0, slot.find('\0')));
    position += length;
}

std::string SequenceToBytes(const KeySequence& sequence, Long length) {
    const auto size = static_cast<std::size_t>(length);
    std::vector<Integer> codes = sequence.Codes();
    codes.resize(std::min(codes.size(), size));
    if (std::find(codes.begin(), codes.end(), -1) != codes.end())
        return {};
    std::string slot(size, '\0');
    std::transform(codes.begin(), codes.end(), slot.begin(), [](Integer code) {
        if (code < 0 || code > 255)
            throw std::overflow_error("the key code " + std::to_string(code) +
                                      " is not one of 0 to 255");
        return static_cast<char>(code);
    });
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
