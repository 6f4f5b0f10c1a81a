#include "host/HexText.h"

#include <stdexcept>

namespace qx::host {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

unsigned Digit(char c) {
    const auto digit = kDigits.find(c);
    if (digit == std::string_view::npos)
        throw std::runtime_error("bytes are written with the digits 0 to 9 and a to f");
    return static_cast<unsigned>(digit);
}

} // namespace

std::string ToHexText(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += kDigits[byte >> 4U];
        text += kDigits[byte & 0xFU];
    }
    return text;
}

std::string FromHexText(std::string_view text) {
    if (text.size() % 2 != 0)
        throw std::runtime_error("a byte has two digits");
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); i += 2)
        bytes += static_cast<char>(Digit(text[i]) << 4U | Digit(text[i + 1]));
    return bytes;
}

} // namespace qx::host
