// Numbers as bytes, lowest byte first, on every machine: the byte order of the keyboard's memory,
// the simulated keyboard's files and the messages between programs.
#pragma once

#include "qxcontrols/common/Types.h"

#include <cstdint>
#include <string>
#include <type_traits>

namespace qx {

template <typename Number>
[[nodiscard]] std::string LittleEndian(Number number) {
    std::string bytes;
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes += static_cast<char>(
            static_cast<Byte>(static_cast<std::make_unsigned_t<Number>>(number) >> (8 * i)));
    return bytes;
}

// The number at `bytes`, which must have enough bytes.
template <typename Number>
[[nodiscard]] Number FromLittleEndian(const char* bytes) {
    std::uint32_t number = 0;
    static_assert(sizeof(Number) <= sizeof number);
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        number |= std::uint32_t{static_cast<Byte>(bytes[i])} << (8 * i);
    return static_cast<Number>(number);
}

} // namespace qx
