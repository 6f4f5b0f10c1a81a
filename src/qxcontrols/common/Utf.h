// Converts between UTF-8, the encoding of all texts, and UTF-16, in which the keyboard stores
// descriptions.
//
// Any input is accepted: ill-formed parts become the replacement character U+FFFD, so that results
// are always well-formed.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qx {

// Whether the text is valid UTF-8 as defined by Unicode: only shortest forms, no surrogates,
// nothing beyond U+10FFFF.
[[nodiscard]] bool IsWellFormedUtf8(std::string_view sText);

// Removes this many characters from the start of the text, or all if there are fewer; an invalid
// byte counts as one character.
void SkipCharacters(std::string_view& sText, std::size_t nCount);

// The text cut to at most this many bytes, never inside a character, with "..." appended; a text
// that is not longer is returned unchanged. Keeps messages about foreign texts short.
[[nodiscard]] std::string Shortened(std::string_view sText, std::size_t nMost = 200);

// One replacement character for each invalid byte.
[[nodiscard]] std::u16string Utf16FromUtf8(std::string_view sText);

// One replacement character for each unpaired surrogate.
[[nodiscard]] std::string Utf8FromUtf16(std::u16string_view units);

// In lower case, for the letters on Western European keyboards.
[[nodiscard]] std::u16string LowerCase(std::u16string_view units);

[[nodiscard]] constexpr bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
[[nodiscard]] constexpr bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace qx
