// The system's texts as UTF-8: names of files, reasons, arguments, variables.
//
// On Windows these are UTF-16 in the system, and what is ill-formed in them becomes U+FFFD here. On
// other systems they are bytes, and stay as they are.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace qx::files {

[[nodiscard]] std::string TextOf(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOf(std::string_view text);

// Why a call failed, in the system's words.
[[nodiscard]] std::string ReasonOf(const std::error_code& reason);

// The environment variable; the empty text when it is not set.
[[nodiscard]] std::string Variable(const char* name);

// The program's arguments, without its name; of the parameters of `main`.
[[nodiscard]] std::vector<std::string> Arguments(int count, char** arguments);

} // namespace qx::files
