// KeyCharacters: the characters that a key types, according to a layout's captions.
#pragma once

#include <string>
#include <string_view>

namespace qx {

// UTF-16 units of one character each, empty if the key types none. A dead character is typed only
// when the space bar is pressed after the key.
struct KeyCharacters {
    std::u16string plain;
    std::u16string shifted;
    bool isPlainDead = false;
    bool isShiftedDead = false;
};

// A key types its caption, with a letter in lower case; with Shift it types the letter in upper
// case, or the character after the caption at the end of the long caption ("Key 1 !", "Touche &
// 1"). In the long caption, a dotted circle before a character (U+25CC) marks it as dead.
[[nodiscard]] KeyCharacters CharactersOf(std::string_view caption, std::string_view longCaption);

} // namespace qx
