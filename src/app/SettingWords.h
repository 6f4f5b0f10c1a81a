// SettingWords: texts of the layers without a language, in the language of the program.
#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace qx::app {

// The translation of a label or word of the host layer; proper names (EAN, Code39) are left
// untranslated.
[[nodiscard]] std::string SettingWord(std::string_view word);

// The same for the test drive's reports.
[[nodiscard]] std::string TestDriveWord(std::string_view text);

} // namespace qx::app
