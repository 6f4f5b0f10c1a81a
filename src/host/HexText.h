// Bytes as hexadecimal text in the files of this host.
#pragma once

#include <string>
#include <string_view>

namespace qx::host {

// Two lower-case digits for each byte.
[[nodiscard]] std::string ToHexText(std::string_view bytes);
// The bytes of such a text. Throws std::runtime_error for any other text.
[[nodiscard]] std::string FromHexText(std::string_view text);

} // namespace qx::host
