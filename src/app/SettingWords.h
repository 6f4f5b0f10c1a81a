// SettingWords: texts of the layers without a language, in the language of the program.
#pragma once

#include <QString>

#include <exception>
#include <string>
#include <string_view>

namespace qx::app {

// The translation of a label or word of the host layer; what is no word of a language (EAN, Code39)
// stays as it is.
[[nodiscard]] std::string SettingWord(std::string_view word);

// The same for what the test drive says of the keyboard.
[[nodiscard]] std::string TestDriveWord(std::string_view text);

// What went wrong: in languages other than English the kind of failure comes first, and then what
// the failing layer itself says.
[[nodiscard]] QString ErrorText(const std::exception& error);

} // namespace qx::app
