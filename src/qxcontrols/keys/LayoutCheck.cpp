#include "qxcontrols/keys/LayoutCheck.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/LayoutLine.h"
#include "qxcontrols/keys/LayoutTextSource.h"

#include <charconv>
#include <limits>
#include <stdexcept>

namespace qx {

namespace {

constexpr Single kGap = 25; // a key's rectangle minus its size on the screen

// Removes the character at the line's front; throws std::invalid_argument unless it is 0, 1 or 2.
void RequireModeDigit(std::string_view& line, const char* what) {
    std::string_view rest = line;
    SkipCharacters(rest, 1);
    const std::string_view digit = line.substr(0, line.size() - rest.size());
    if (digit != "0" && digit != "1" && digit != "2")
        throw std::invalid_argument(
            std::string("the ") + what + " is " +
            (digit.empty() ? "missing" : "\"" + std::string(digit) + "\", not 0, 1 or 2"));
    line = rest;
}

void RequireKey(Long lID, std::string_view line) {
    LayoutKey key;
    key.Parse(lID, line);
    std::string_view modes = key.ParseGeometry(line);
    const bool hasRectangle = modes.size() != TrimLeft(line).size();
    RequireModeDigit(modes, "support");
    RequireModeDigit(modes, "colour set");
    if (key.support == KEYMODE_NONE)
        return;
    if (!hasRectangle)
        throw std::invalid_argument("the rectangle (top,left,width,height) is missing");
    const bool hasPlace = key.width != 0 || key.height != 0;
    if (hasPlace && (key.width <= kGap || key.height <= kGap))
        throw std::invalid_argument(
            "a key of " + std::to_string(static_cast<int>(key.width)) + " by " +
            std::to_string(static_cast<int>(key.height)) +
            " cannot be seen: more than 25 each way, or 0 by 0 for a key without a place");
    const std::string_view caption = Trim(key.caption);
    if (caption.empty() && (Trim(key.longCaption).empty() || key.longCaption.starts_with("Hex(")))
        throw std::invalid_argument("the key has no caption");
}

void RequireLanguageID(std::string_view text) {
    Integer id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id <= 0)
        throw std::invalid_argument("\"" + std::string(text) +
                                    "\" is not a language id from 1 to 32767");
}

} // namespace

std::string LayoutFault(const LayoutTextSource& source) {
    Long number = LayoutTextSource::kLanguageID;
    std::string what;
    bool hasKeys = false;
    try {
        if (const std::string id = source.String(number); !id.empty())
            RequireLanguageID(id);
        for (Long key = KeyboardSequences::kMinKeyID; key <= KeyboardSequences::kMaxKeyID; ++key) {
            number = LayoutTextSource::kFirstKey + key;
            what = "position code " + std::to_string(key) + ": ";
            const std::string line = source.String(number);
            if (Trim(line).empty())
                continue;
            hasKeys = true;
            RequireKey(key, line);
        }
    } catch (const std::exception& error) {
        return source.Place(number) + ": " + what + error.what();
    }
    // The place of a string that does not exist is the file.
    constexpr Long kNoString = -1;
    return hasKeys ? std::string() : source.Place(kNoString) + ": the layout has no keys";
}

} // namespace qx
