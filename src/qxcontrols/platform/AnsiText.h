// The 8-bit text that closed libraries take in place of UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace qx {

// The text in the 8-bit character set of the machine: on Windows its ANSI code page, in which a
// character may have no place and becomes another one like it; elsewhere UTF-8 as it is. A text
// that Windows does not convert stays as it is too.
[[nodiscard]] std::string AnsiText(std::string_view sText);

} // namespace qx
