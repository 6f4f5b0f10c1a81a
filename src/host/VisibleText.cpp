#include "host/VisibleText.h"

#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <functional>

namespace qx::host {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};
constexpr Range kHidden[] = {
    {0x0000, 0x001F},   // control characters
    {0x007F, 0x009F},   // delete and C1 control characters
    {0x061C, 0x061C},   // direction of writing
    {0x200B, 0x200B},   // zero-width space
    {0x200E, 0x200F},   // direction of writing
    {0x2028, 0x202E},   // ends of lines and paragraphs; direction of writing
    {0x2060, 0x206F},   // invisible operators; direction of writing
    {0xFEFF, 0xFEFF},   // zero-width no-break space
    {0xFFF9, 0xFFFB},   // annotations
    {0xE0000, 0xE007F}, // tags
};

// At least this many digits.
std::string Hexadecimal(unsigned number, std::size_t digits) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (; number != 0 || text.size() < digits; number /= 16)
        text.insert(text.begin(), kDigits[number % 16]);
    return text;
}

std::string EscapedUnits(std::u16string_view units) {
    std::string escaped;
    for (const char16_t unit : units)
        escaped += "\\u" + Hexadecimal(unit, 4);
    return escaped;
}

// Copies the text character by character. `isEscaped` selects the characters to escape; invalid
// UTF-8 is always escaped.
std::string Escaped(std::string_view text, const std::function<bool(char32_t)>& isEscaped) {
    std::string escaped;
    while (!text.empty()) {
        if (text.front() >= ' ' && text.front() <= '~') { // the usual case
            escaped += text.front();
            text.remove_prefix(1);
            continue;
        }
        std::string_view rest = text;
        SkipCharacters(rest, 1);
        const std::string_view bytes = text.substr(0, text.size() - rest.size());
        text = rest;
        if (!IsWellFormedUtf8(bytes)) {
            escaped += "\\x" + Hexadecimal(static_cast<unsigned char>(bytes.front()), 2);
            continue;
        }
        const std::u16string units = Utf16FromUtf8(bytes);
        const char32_t character =
            units.size() == 1
                ? char32_t{units[0]}
                : 0x10000 + ((char32_t{units[0]} & 0x3FFU) << 10U) + (units[1] & 0x3FFU);
        escaped += isEscaped(character) ? EscapedUnits(units) : std::string(bytes);
    }
    return escaped;
}

} // namespace

bool IsHidden(char32_t character) {
    return std::any_of(std::begin(kHidden), std::end(kHidden), [&](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

std::string VisibleText(std::string_view text) {
    return Escaped(text, IsHidden);
}

std::string VisibleLines(std::string_view text) {
    return Escaped(text, [](char32_t each) { return each != '\n' && IsHidden(each); });
}

std::string Utf8Text(std::string_view text) {
    return Escaped(text, [](char32_t) { return false; });
}

} // namespace qx::host
