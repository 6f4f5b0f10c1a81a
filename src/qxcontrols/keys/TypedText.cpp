#include "qxcontrols/keys/TypedText.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace qx {

namespace {

// The customary key numbers, which are the same in every layout.
constexpr Byte kLeftShift = 44;
constexpr Byte kSpaceBar = 61;
constexpr Byte kRelease = 128;

struct Stroke {
    Byte key;
    bool isShifted;
};

// How the key of these captions types the character, if it does.
std::optional<bool> IsShifted(std::u16string_view character, std::string_view caption,
                              std::string_view longCaption) {
    const std::u16string plain = Utf16FromUtf8(caption);
    const std::u16string small = LowerCase(plain);
    if (character == small)
        return false;
    if (character == plain)
        return true; // a letter, as its small one is another
    const std::string ending =
        std::string(caption) + " " + Utf8FromUtf16(character); // "1 !" of "Key 1 !"
    const bool hasSecond = small == plain && longCaption.ends_with(" " + ending);
    return hasSecond ? std::optional(true) : std::nullopt;
}

Stroke StrokeOf(std::string_view character, const QXKeyboardLayoutData& layout) {
    if (character == " ")
        return {kSpaceBar, false};
    const std::u16string units = Utf16FromUtf8(character);
    std::optional<Stroke> shifted;
    for (Long key = layout.GetMinKeyID(); key < KeyNames::kFirstUnpressable; ++key) {
        const std::string_view caption = Trim(layout.KeyCaption(key));
        if (caption.empty())
            continue;
        const auto found = IsShifted(units, caption, Trim(layout.KeyLongCaption(key)));
        if (found && !*found)
            return {static_cast<Byte>(key), false};
        if (found && !shifted)
            shifted = {static_cast<Byte>(key), true};
    }
    if (!shifted)
        throw std::invalid_argument("no key of the layout types \"" + std::string(character) +
                                    "\"");
    return *shifted;
}

} // namespace

std::vector<Byte> CodesThatType(std::string_view sText, const QXKeyboardLayoutData& layout) {
    std::vector<Byte> codes;
    bool isShifted = false;
    const auto shift = [&](bool on) {
        if (std::exchange(isShifted, on) != on)
            codes.push_back(on ? kLeftShift : static_cast<Byte>(kLeftShift + kRelease));
    };
    while (!sText.empty()) {
        std::string_view rest = sText;
        SkipCharacters(rest, 1);
        const Stroke stroke = StrokeOf(sText.substr(0, sText.size() - rest.size()), layout);
        shift(stroke.isShifted);
        codes.push_back(stroke.key);
        codes.push_back(static_cast<Byte>(stroke.key + kRelease));
        sText = rest;
    }
    shift(false);
    return codes;
}

} // namespace qx
