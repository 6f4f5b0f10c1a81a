// Files by their names, which are UTF-8 as all texts are.
//
// On Windows the system's own functions do the work: the standard library's paths and streams would
// add all its locales, 800 KB, to every program.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

// The name with the machine's own separators: where they are "/", a "\" counts as one.
[[nodiscard]] std::string OwnFileName(std::string sName);

// Whether the name is that of something other than an ordinary file, such as a folder or a pipe.
[[nodiscard]] bool IsSpecialFile(const std::string& sName);

// The file's bytes, but not more than `most`; none when it cannot be read.
[[nodiscard]] std::optional<std::string> ReadFile(const std::string& sName, std::size_t most);

// Those of the folder's files that have the extension (".qxl"), with the folder, in the order of
// their names. If the folder cannot be read, the list is empty and `error` has the reason.
[[nodiscard]] std::vector<std::string> FilesIn(const std::string& sFolder,
                                               std::string_view sExtension, std::string& error);

#ifdef _WIN32
// A name, or any other text, as the system accepts it, and as the system gives it. Ill-formed
// parts become U+FFFD.
[[nodiscard]] std::wstring WideText(std::string_view sText);
[[nodiscard]] std::string TextOfWide(std::wstring_view text);

// The system's words for an error; the empty text where it has none.
[[nodiscard]] std::string SystemWords(unsigned long lNumber);
// The same, preceded by the number.
[[nodiscard]] std::string SystemError(unsigned long lNumber);
#endif

} // namespace qx
