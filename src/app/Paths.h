// Paths between Qt and the standard library.
#pragma once

#include <QString>

#include <filesystem>

namespace qx::app {

[[nodiscard]] inline std::filesystem::path ToPath(const QString& file) {
    return std::filesystem::path(file.toStdU16String());
}

[[nodiscard]] inline QString ToQt(const std::filesystem::path& file) {
    return QString::fromStdU16String(file.u16string());
}

} // namespace qx::app
