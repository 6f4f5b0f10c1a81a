// Short texts for trace lines and messages.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>

namespace qx {

// Upper-case hexadecimal without leading zeros; a negative number as its 32 bits (-1: "FFFFFFFF").
[[nodiscard]] std::string Hex(Long lValue);

// The same for every byte, separated by spaces.
[[nodiscard]] std::string HexBytes(std::string_view sBytes);

[[nodiscard]] std::string_view TrueFalse(bool fValue); // "True" or "False"

// Removes spaces (character 32) at both ends, or at the left end only.
[[nodiscard]] std::string_view Trim(std::string_view sText);
[[nodiscard]] std::string_view TrimLeft(std::string_view sText);

} // namespace qx
