#include "qxcontrols/platform/FileAccess.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace qx {

std::string OwnFileName(std::string sName) {
    std::replace(sName.begin(), sName.end(), '\\', '/');
    return sName;
}

bool IsSpecialFile(const std::string& sName) {
    std::error_code failure;
    const auto status = std::filesystem::status(sName, failure);
    return std::filesystem::exists(status) && !std::filesystem::is_regular_file(status);
}

std::optional<std::string> ReadFile(const std::string& sName, std::size_t most) {
    std::ifstream stream(sName, std::ios::binary);
    if (!stream)
        return std::nullopt;
    std::string bytes;
    std::array<char, 4096> part;
    while (stream && bytes.size() < most) {
        const std::size_t wanted = std::min(part.size(), most - bytes.size());
        stream.read(part.data(), static_cast<std::streamsize>(wanted));
        bytes.append(part.data(), static_cast<std::size_t>(stream.gcount()));
    }
    if (stream.bad())
        return std::nullopt;
    return bytes;
}

std::vector<std::string> FilesIn(const std::string& sFolder, std::string_view sExtension,
                                 std::string& error) {
    std::vector<std::string> files;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(sFolder, failure), end; !failure && entry != end;
         entry.increment(failure))
        if (entry->path().extension() == sExtension)
            files.push_back(entry->path().string());
    if (failure) {
        error = failure.message();
        return {};
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace qx
