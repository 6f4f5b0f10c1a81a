// SHA-256, the hash of FIPS 180-4, to recognise bytes by.
#pragma once

#include <string>
#include <string_view>

namespace qx::files {

// 64 lower-case hexadecimal digits.
[[nodiscard]] std::string Sha256(std::string_view bytes);

} // namespace qx::files
