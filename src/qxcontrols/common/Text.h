// Short texts for trace lines and messages.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx {

// Upper-case hexadecimal without leading zeros; a negative number as its 32 bits (-1: "FFFFFFFF").
[[nodiscard]] std::string Hex(Long lValue);

// The same for every byte, separated by spaces.
[[nodiscard]] std::string HexBytes(std::string_view sBytes);

[[nodiscard]] std::string_view TrueFalse(bool fValue); // "True" or "False"

// Removes spaces (character 32) at both ends, or at the left end only.
[[nodiscard]] std::string_view Trim(std::string_view sText);
[[nodiscard]] std::string_view TrimLeft(std::string_view sText);

// The texts with another one between each two.
[[nodiscard]] std::string Joined(const std::vector<std::string>& texts,
                                 std::string_view sBetween = ", ");

// The pattern with the first argument in place of %1, and so on up to %9; there are at least
// `ArgumentsIn` of them.
[[nodiscard]] std::string Filled(std::string_view sPattern,
                                 const std::vector<std::string>& arguments);
[[nodiscard]] std::size_t ArgumentsIn(std::string_view sPattern);

} // namespace qx
