#include "qxcontrols/keys/KeyCharacters.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"

namespace qx {

namespace {

constexpr char16_t kDead = u'\u25CC';

struct Mentioned {
    std::u16string character; // empty if the word is not a single character
    bool isDead = false;
};

bool IsOneCharacter(std::u16string_view units) {
    return units.size() == 1 || (units.size() == 2 && IsHighSurrogate(units.front()));
}

// Removes the last word and the space before it from the text, and returns the word.
Mentioned TakeLastWord(std::u16string_view& text) {
    const std::size_t blank = text.rfind(u' ');
    std::u16string_view word = blank == std::u16string_view::npos ? text : text.substr(blank + 1);
    text = text.substr(0, blank == std::u16string_view::npos ? 0 : blank);
    const bool isDead = word.size() > 1 && word.front() == kDead;
    if (isDead)
        word.remove_prefix(1);
    return IsOneCharacter(word) ? Mentioned{std::u16string(word), isDead} : Mentioned{};
}

} // namespace

KeyCharacters CharactersOf(std::string_view caption, std::string_view longCaption) {
    const std::u16string engraved = Utf16FromUtf8(Trim(caption));
    if (!IsOneCharacter(engraved))
        return {};
    if (std::u16string small = LowerCase(engraved); small != engraved)
        return {std::move(small), engraved};
    const std::u16string words = Utf16FromUtf8(Trim(longCaption));
    std::u16string_view rest = words;
    const Mentioned last = TakeLastWord(rest);
    const Mentioned before = TakeLastWord(rest);
    if (before.character == engraved)
        return {engraved, last.character, before.isDead, last.isDead};
    return {engraved, {}, last.character == engraved && last.isDead, false};
}

} // namespace qx
