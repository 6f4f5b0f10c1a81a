// The number types of the keyboard and of the controls' interfaces.
#pragma once

#include <cstdint>

namespace qx {

using Byte = std::uint8_t;    // one byte of configuration memory, one key code
using Integer = std::int16_t; // indexes, counts, position codes
using Long = std::int32_t;    // image addresses, sizes, driver statuses, colours
using Single = float;         // key geometry

} // namespace qx
