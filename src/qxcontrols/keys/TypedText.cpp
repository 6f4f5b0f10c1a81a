#include "qxcontrols/keys/TypedText.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyCharacters.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <optional>
#include <string>
#include <utility>

namespace qx {

namespace {

// The usual key numbers, which are the same in every layout.
constexpr Byte kLeftShift = 44;
constexpr Byte kSpaceBar = 61;

struct Stroke {
    Byte key;
    bool isShifted;
    bool isDead;
};

// The key's strokes that type the character: at most one plain and one with Shift.
std::vector<Stroke> StrokesOf(Byte key, std::u16string_view character,
                              const KeyCharacters& characters) {
    std::vector<Stroke> strokes;
    if (character == characters.plain)
        strokes.push_back({key, false, characters.isPlainDead});
    if (character == characters.shifted)
        strokes.push_back({key, true, characters.isShiftedDead});
    return strokes;
}

// The simplest stroke: preferably not dead, then without Shift, then the lowest key number.
Stroke StrokeOf(std::string_view character, const QXKeyboardLayoutData& layout) {
    if (character == " ")
        return {kSpaceBar, false, false};
    const std::u16string units = Utf16FromUtf8(character);
    std::optional<Stroke> best;
    for (Long key = layout.GetMinKeyID(); key < KeyNames::kFirstUnpressable; ++key)
        for (const Stroke& stroke :
             StrokesOf(static_cast<Byte>(key), units,
                       CharactersOf(layout.KeyCaption(key), layout.KeyLongCaption(key))))
            if (!best || std::pair(stroke.isDead, stroke.isShifted) <
                             std::pair(best->isDead, best->isShifted))
                best = stroke;
    if (!best)
        throw UntypableCharacter(std::string(character));
    return *best;
}

} // namespace

std::vector<Byte> CodesThatType(std::string_view sText, const QXKeyboardLayoutData& layout) {
    std::vector<Byte> codes;
    bool isShifted = false;
    const auto shift = [&](bool on) {
        if (std::exchange(isShifted, on) != on)
            codes.push_back(on ? kLeftShift : static_cast<Byte>(kLeftShift + kRelease));
    };
    const auto press = [&](Byte key) {
        codes.push_back(key);
        codes.push_back(static_cast<Byte>(key + kRelease));
    };
    while (!sText.empty()) {
        std::string_view rest = sText;
        SkipCharacters(rest, 1);
        const Stroke stroke = StrokeOf(sText.substr(0, sText.size() - rest.size()), layout);
        shift(stroke.isShifted);
        press(stroke.key);
        if (stroke.isDead) {
            shift(false);
            press(kSpaceBar);
        }
        sText = rest;
    }
    shift(false);
    return codes;
}

} // namespace qx
