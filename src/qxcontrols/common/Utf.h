// Between UTF-8, in which all texts are, and UTF-16, in which the keyboard stores descriptions.
//
// The conversions take anything: what is ill-formed becomes the replacement character U+FFFD, so
// that their results are well-formed always.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qx {

// Whether the text is UTF-8 by Unicode's definition: the shortest form of each character, none of
// them a surrogate or beyond U+10FFFF.
[[nodiscard]] bool IsWellFormedUtf8(std::string_view sText);

// Takes that many characters off the text's front, or all that there are; a byte that begins none
// counts as one.
void SkipCharacters(std::string_view& sText, std::size_t nCount);

// The text's beginning, of at most that many bytes and never ending within a character, with "..."
// behind it; the text itself when it is no longer. So that messages about foreign text stay short.
[[nodiscard]] std::string Shortened(std::string_view sText, std::size_t nMost = 200);

// One replacement character for each byte that begins no character.
[[nodiscard]] std::u16string Utf16FromUtf8(std::string_view sText);

// One replacement character for each surrogate that is not half of a pair.
[[nodiscard]] std::string Utf8FromUtf16(std::u16string_view units);

// In lower case, as far as the letters of Western European keyboards go.
[[nodiscard]] std::u16string LowerCase(std::u16string_view units);

[[nodiscard]] constexpr bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}
[[nodiscard]] constexpr bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

} // namespace qx
