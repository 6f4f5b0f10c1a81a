#include "cli/Output.h"

#include "files/Files.h"

#include <algorithm>

namespace qx::cli {

namespace {

// How wide the text is on a screen, near enough: its UTF-8 characters.
std::size_t Width(const std::string& text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<Byte>(c) & 0xC0U) != 0x80U; }));
}

} // namespace

std::string AlignedText(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i)
            widths[i] = std::max(widths[i], Width(row[i]));
    }
    std::string text;
    for (const auto& row : rows) {
        std::string line = "  ";
        for (std::size_t i = 0; i < row.size(); ++i)
            line += row[i] + std::string(widths[i] - Width(row[i]) + 2, ' ');
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction) {
    if (file.empty()) {
        context.Result({{"direction", direction}, {"document", document.AsJson()}},
                       document.ToText());
        return;
    }
    context.RefuseKeyboardFile(file);
    try {
        files::WriteFileAtomically(file, document.ToText());
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
    context.Result({{"direction", direction}, {"file", file}},
                   direction + ": wrote " + file + "\n");
}

std::string Counted(std::size_t count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace qx::cli
