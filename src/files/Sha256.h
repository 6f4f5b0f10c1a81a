// SHA-256, the hash function of FIPS 180-4, used to recognise bytes.
#pragma once

#include <string>
#include <string_view>

namespace qx::files {

// 64 lower-case hexadecimal digits.
[[nodiscard]] std::string Sha256(std::string_view bytes);

} // namespace qx::files
