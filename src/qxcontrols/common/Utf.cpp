#include "qxcontrols/common/Utf.h"

#include <bit>

namespace qx {

namespace {

constexpr char32_t kNone = 0xFFFFFFFF;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstBeyondBmp = 0x10000;
constexpr char32_t kLast = 0x10FFFF;
constexpr char32_t kFirstHighSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kLastLowSurrogate = 0xDFFF;

// A continuation byte of a UTF-8 character: these two bits, then six bits of the character.
constexpr unsigned kFollowMask = 0xC0;
constexpr unsigned kFollowBits = 0x80;
constexpr std::ptrdiff_t kMostBytes = 4;
// The first character of each length in bytes, indexed by length; the lead byte then begins with
// that many ones, or with none for a single byte.
constexpr char32_t kFirstOfLength[kMostBytes + 1] = {0, 0, 0x80, 0x800, kFirstBeyondBmp};

constexpr bool IsSurrogate(char32_t character) {
    return character >= kFirstHighSurrogate && character <= kLastLowSurrogate;
}

// Reads the character at `at` and advances `at`; for an invalid one, returns kNone and skips a
// byte.
inline char32_t Take(const char*& at, const char* end) {
    const auto lead = static_cast<unsigned char>(*at++);
    if (lead < kFirstOfLength[2])
        return lead;
    const auto length = static_cast<std::ptrdiff_t>(std::countl_one(lead));
    if (length < 2 || length > kMostBytes || end - at < length - 1)
        return kNone;
    char32_t character = lead & 0x7FU >> length;
    for (std::ptrdiff_t i = 0; i < length - 1; ++i) {
        const auto byte = static_cast<unsigned char>(at[i]);
        if ((byte & kFollowMask) != kFollowBits)
            return kNone;
        character = character << 6U | (byte & ~kFollowMask);
    }
    if (character < kFirstOfLength[length] || character > kLast || IsSurrogate(character))
        return kNone;
    at += length - 1;
    return character;
}

// Writes the character to `to`, which has room for kMostBytes, and returns the number of bytes.
std::ptrdiff_t PutUtf8(char* to, char32_t character) {
    if (character < kFirstOfLength[2]) {
        *to = static_cast<char>(character);
        return 1;
    }
    std::ptrdiff_t length = 2;
    while (length < kMostBytes && character >= kFirstOfLength[length + 1])
        ++length;
    for (std::ptrdiff_t i = length - 1; i > 0; --i) {
        to[i] = static_cast<char>(kFollowBits | (character & ~kFollowMask & 0xFFU));
        character >>= 6U;
    }
    to[0] = static_cast<char>(0xF00U >> length | character);
    return length;
}

} // namespace

bool IsWellFormedUtf8(std::string_view sText) {
    const char* at = sText.data();
    for (const char* const end = at + sText.size(); at != end;)
        if (Take(at, end) == kNone)
            return false;
    return true;
}

void SkipCharacters(std::string_view& sText, std::size_t nCount) {
    const char* at = sText.data();
    for (const char* const end = at + sText.size(); nCount > 0 && at != end; --nCount)
        (void)Take(at, end);
    sText.remove_prefix(static_cast<std::size_t>(at - sText.data()));
}

std::string Shortened(std::string_view sText, std::size_t nMost) {
    if (sText.size() <= nMost)
        return std::string(sText);
    std::size_t end = nMost;
    while (end > 0 && (static_cast<unsigned char>(sText[end]) & 0xC0U) == 0x80U)
        --end;
    return std::string(sText.substr(0, end)) + "...";
}

std::u16string Utf16FromUtf8(std::string_view sText) {
    std::u16string units(sText.size(), u'\0'); // never more units than bytes
    char16_t* to = units.data();
    const char* at = sText.data();
    for (const char* const end = at + sText.size(); at != end;) {
        const char32_t character = Take(at, end);
        if (character < kFirstBeyondBmp) {
            *to++ = static_cast<char16_t>(character);
        } else if (character == kNone) {
            *to++ = static_cast<char16_t>(kReplacement);
        } else {
            const char32_t rest = character - kFirstBeyondBmp;
            *to++ = static_cast<char16_t>(kFirstHighSurrogate | rest >> 10U);
            *to++ = static_cast<char16_t>(kFirstLowSurrogate | (rest & 0x3FFU));
        }
    }
    units.resize(static_cast<std::size_t>(to - units.data()));
    return units;
}

std::string Utf8FromUtf16(std::u16string_view units) {
    std::string text(units.size() * static_cast<std::size_t>(kMostBytes), '\0');
    char* to = text.data();
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t character = units[i];
        if (IsHighSurrogate(units[i]) && i + 1 < units.size() && IsLowSurrogate(units[i + 1]))
            character = kFirstBeyondBmp + ((character - kFirstHighSurrogate) << 10U) +
                        (units[++i] - kFirstLowSurrogate);
        to += PutUtf8(to, IsSurrogate(character) ? kReplacement : character);
    }
    text.resize(static_cast<std::size_t>(to - text.data()));
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
