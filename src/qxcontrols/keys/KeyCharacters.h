// KeyCharacters: the characters that a key types, as the captions of a layout tell them.
#pragma once

#include <string>
#include <string_view>

namespace qx {

// UTF-16 units of one character each, empty where the key types none. A dead one is typed only by
// pressing the space bar after the key.
struct KeyCharacters {
    std::u16string plain;
    std::u16string shifted;
    bool isPlainDead = false;
    bool isShiftedDead = false;
};

// A key types its caption, a letter in lower case, and with Shift the letter in upper case or the
// character behind the caption at the end of the long caption ("Key 1 !", "Touche & 1"). In the
// long caption, a dotted circle before a character (U+25CC) marks it as dead.
[[nodiscard]] KeyCharacters CharactersOf(std::string_view caption, std::string_view longCaption);

} // namespace qx
