#include "files/SystemTexts.h"

#include <cstdlib>

namespace qx::files {

std::string TextOf(const std::filesystem::path& path) {
    return path.string();
}

std::filesystem::path PathOf(std::string_view text) {
    return text;
}

std::string ReasonOf(const std::error_code& reason) {
    return reason.message();
}

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

std::vector<std::string> Arguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

} // namespace qx::files
