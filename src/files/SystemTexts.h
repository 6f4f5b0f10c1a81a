// The system's texts as UTF-8: file names, error messages, arguments, environment variables.
//
// On Windows the system uses UTF-16, and ill-formed parts become U+FFFD. On other systems the texts
// are bytes and are passed unchanged.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace qx::files {

[[nodiscard]] std::string TextOf(const std::filesystem::path& path);
[[nodiscard]] std::filesystem::path PathOf(std::string_view text);

// The system's error message.
[[nodiscard]] std::string ReasonOf(const std::error_code& reason);

// The environment variable; empty if it is not set.
[[nodiscard]] std::string Variable(const char* name);

// The program's arguments without its name, from the parameters of `main`.
[[nodiscard]] std::vector<std::string> Arguments(int count, char** arguments);

} // namespace qx::files
