// The formats of a key sheet and their file name suffixes.
#pragma once

#include "files/SystemTexts.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qx::sheet {

enum class SheetFormat { Pdf, Svg };

// Windows has no SVG: Debian has no source of that part of Qt to build it from.
#ifdef _WIN32
inline constexpr bool kHasSvg = false;
inline constexpr const char* kFilePatterns = "*.pdf";
#else
inline constexpr bool kHasSvg = true;
inline constexpr const char* kFilePatterns = "*.pdf *.svg";
#endif

[[nodiscard]] inline std::vector<std::string> Suffixes() {
    return kHasSvg ? std::vector<std::string>{".pdf", ".svg"} : std::vector<std::string>{".pdf"};
}

// The format for the file name's suffix, ignoring case; none for any other suffix.
[[nodiscard]] inline std::optional<SheetFormat> FormatOf(const std::filesystem::path& file) {
    std::string suffix = files::TextOf(file.extension());
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
    if (suffix == ".pdf")
        return SheetFormat::Pdf;
    if (kHasSvg && suffix == ".svg")
        return SheetFormat::Svg;
    return std::nullopt;
}

} // namespace qx::sheet
