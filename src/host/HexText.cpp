#include "host/HexText.h"

namespace qx::host {

namespace {

constexpr std::string_view kLowerDigits = "0123456789abcdef";

} // namespace

std::string ToHexText(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kLowerDigits[byte >> 4U];
        text += kLowerDigits[byte & 0xFU];
    }
    return text;
}

std::optional<std::string> FromHexText(std::string_view text) {
    if (text.size() % 2 != 0 || text.find_first_not_of(kLowerDigits) != std::string_view::npos)
        return std::nullopt;
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes +=
            static_cast<char>(kLowerDigits.find(text[i]) << 4U | kLowerDigits.find(text[i + 1]));
    return bytes;
}

} // namespace qx::host
