// Bytes as hexadecimal text in the files of this host.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qx::host {

// Two lower-case digits for each byte.
[[nodiscard]] std::string ToHexText(std::string_view bytes);
// The bytes of such a text; nothing for any other text.
[[nodiscard]] std::optional<std::string> FromHexText(std::string_view text);

} // namespace qx::host
