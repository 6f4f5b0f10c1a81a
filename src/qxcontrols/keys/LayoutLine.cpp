#include "qxcontrols/keys/LayoutLine.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/TextFault.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace qx {

namespace {

constexpr std::string_view kLongCaptionFollows = "\\\\";

// Rounds a fraction to the nearest whole number, and a half to even.
Single WholeNumber(Long lID, std::string_view text) {
    std::string_view digits = Trim(text);
    if (digits.starts_with('+'))
        digits.remove_prefix(1);
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc::invalid_argument || end != digits.data() + digits.size() ||
        std::isnan(number))
        throw TextFaultError({TextFaultKind::NotANumber, {std::to_string(lID), std::string(text)}});
    number = std::nearbyint(number);
    if (error != std::errc() || number < std::numeric_limits<Integer>::min() ||
        number > std::numeric_limits<Integer>::max())
        throw TextFaultError(
            {TextFaultKind::NumberOver16Bits, {std::to_string(lID), std::string(text)}});
    return static_cast<Single>(number);
}

// Removes the character at the line's front; returns its value if it is 0, 1 or 2, else 0.
int TakeModeDigit(std::string_view& line) {
    const char digit = line.empty() ? '0' : line.front();
    SkipCharacters(line, 1);
    return digit >= '0' && digit <= '2' ? digit - '0' : 0;
}

} // namespace

void LayoutKey::Parse(Long lID, std::string_view line) {
    constexpr std::size_t kSeparators = 2; // any characters
    caption.clear();
    longCaption.clear();
    support = KEYMODE_NONE;
    color = COLOR_SET_1;
    line = ParseGeometry(lID, line);
    if (line.empty())
        return;
    support = static_cast<KEY_SUPPORT>(TakeModeDigit(line));
    color = static_cast<COLOR_SET>(TakeModeDigit(line));

    SkipCharacters(line, kSeparators);
    const std::size_t captionEnd = line.find(kLongCaptionFollows);
    caption = line.substr(0, captionEnd);
    if (captionEnd != std::string_view::npos)
        longCaption = line.substr(captionEnd + kLongCaptionFollows.size());
    else
        // The text is "Hex", but the number is decimal.
        longCaption = caption.empty() ? "Hex(" + std::to_string(lID) + ")" : caption;
}

std::string_view LayoutKey::ParseGeometry(Long lID, std::string_view line) {
    struct Number {
        Single LayoutKey::*member;
        char end;
    };
    constexpr std::array<Number, 4> kNumbers = {{{&LayoutKey::y, ','},
                                                 {&LayoutKey::x, ','},
                                                 {&LayoutKey::width, ','},
                                                 {&LayoutKey::height, ')'}}};
    line = TrimLeft(line);
    if (!line.starts_with('('))
        return line;
    line.remove_prefix(1);
    for (const auto& [member, separator] : kNumbers) {
        const std::size_t end = line.find(separator);
        if (end == std::string_view::npos)
            throw TextFaultError(
                {TextFaultKind::NoSeparator, {std::to_string(lID), std::string(1, separator)}});
        this->*member = WholeNumber(lID, line.substr(0, end));
        line.remove_prefix(end + 1);
    }
    return line;
}

} // namespace qx
