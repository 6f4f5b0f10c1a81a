// SettingWords: the names of settings in the language of the program.
#pragma once

#include <string>
#include <string_view>

namespace qx::app {

// The translation of a label or word of the host layer; what is no word of a language (EAN, Code39)
// stays as it is.
[[nodiscard]] std::string SettingWord(std::string_view word);

} // namespace qx::app
