#include "qxcontrols/common/Utf.h"

#include <optional>

namespace qx {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstBeyondBmp = 0x10000;
constexpr char32_t kLast = 0x10FFFF;
constexpr char32_t kFirstHighSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastLowSurrogate = 0xDFFF;

// How UTF-8 writes the characters from `first` on: the lead byte's fixed bits, and how many bytes
// with six bits each follow it.
struct Form {
    char32_t first;
    unsigned leadMask;
    unsigned leadBits;
    std::size_t following;
};
constexpr Form kForms[] = {
    {0x00, 0x80, 0x00, 0},
    {0x80, 0xE0, 0xC0, 1},
    {0x800, 0xF0, 0xE0, 2},
    {kFirstBeyondBmp, 0xF8, 0xF0, 3},
};
constexpr unsigned kFollowMask = 0xC0;
constexpr unsigned kFollowBits = 0x80;

constexpr bool IsSurrogate(char32_t character) {
    return character >= kFirstHighSurrogate && character <= kLastLowSurrogate;
}

// Takes the character at the text's front off it; if none begins there, takes one byte and gives
// nothing.
std::optional<char32_t> TakeCharacter(std::string_view& text) {
    const auto byteAt = [&](std::size_t i) -> unsigned {
        return static_cast<unsigned char>(text[i]);
    };
    for (const Form& form : kForms) {
        if ((byteAt(0) & form.leadMask) != form.leadBits)
            continue;
        char32_t character = byteAt(0) & ~form.leadMask;
        std::size_t i = 1;
        while (i <= form.following && i < text.size() && (byteAt(i) & kFollowMask) == kFollowBits)
            character = character << 6U | (byteAt(i++) & ~kFollowMask);
        if (i <= form.following || character < form.first || character > kLast ||
            IsSurrogate(character))
            break;
        text.remove_prefix(i);
        return character;
    }
    text.remove_prefix(1);
    return std::nullopt;
}

void AppendUtf8(std::string& text, char32_t character) {
    const Form* form = kForms;
    for (const Form& candidate : kForms)
        if (character >= candidate.first)
            form = &candidate;
    text += static_cast<char>(form->leadBits | character >> (6 * form->following));
    for (std::size_t i = form->following; i-- > 0;)
        text += static_cast<char>(kFollowBits | (character >> (6 * i) & ~kFollowMask & 0xFFU));
}

} // namespace

bool IsWellFormedUtf8(std::string_view sText) {
    while (!sText.empty())
        if (!TakeCharacter(sText))
            return false;
    return true;
}

void SkipCharacters(std::string_view& sText, std::size_t nCount) {
    for (; nCount > 0 && !sText.empty(); --nCount)
        (void)TakeCharacter(sText);
}

std::u16string Utf16FromUtf8(std::string_view sText) {
    std::u16string units;
    units.reserve(sText.size());
    while (!sText.empty()) {
        const char32_t character = TakeCharacter(sText).value_or(kReplacement);
        if (character < kFirstBeyondBmp) {
            units += static_cast<char16_t>(character);
        } else {
            const char32_t rest = character - kFirstBeyondBmp;
            units += static_cast<char16_t>(kFirstHighSurrogate | rest >> 10U);
            units += static_cast<char16_t>(kFirstLowSurrogate | (rest & 0x3FFU));
        }
    }
    return units;
}

std::string Utf8FromUtf16(std::u16string_view units) {
    std::string text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t character = units[i];
        if (IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1]))
            character = kFirstBeyondBmp + ((character - kFirstHighSurrogate) << 10U) +
                        (units[++i] - kFirstLowSurrogate);
        AppendUtf8(text, IsSurrogate(character) ? kReplacement : character);
    }
    return text;
}

std::u16string LowerCase(std::u16string_view units) {
    std::u16string small(units);
    for (char16_t& letter : small)
        if ((letter >= u'A' && letter <= u'Z') ||
            (letter >= u'\u00C0' && letter <= u'\u00DE' && letter != u'\u00D7'))
            letter = static_cast<char16_t>(letter + 0x20);
    return small;
}

} // namespace qx
