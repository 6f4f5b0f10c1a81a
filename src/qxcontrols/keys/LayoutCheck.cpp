#include "qxcontrols/keys/LayoutCheck.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/LayoutLine.h"

#include <charconv>
#include <limits>

namespace qx {

namespace {

constexpr Single kGap = 25; // a key's rectangle minus its size on the screen

using Kind = TextFaultKind;

// Removes the character at the line's front; throws TextFaultError unless it is 0, 1 or 2.
void RequireModeDigit(const std::string& key, std::string_view& line, Kind missing, Kind invalid) {
    std::string_view rest = line;
    SkipCharacters(rest, 1);
    const std::string_view digit = line.substr(0, line.size() - rest.size());
    if (digit.empty())
        throw TextFaultError({missing, {key}});
    if (digit != "0" && digit != "1" && digit != "2")
        throw TextFaultError({invalid, {key, std::string(digit)}});
    line = rest;
}

void RequireKey(Long lID, std::string_view line) {
    LayoutKey key;
    key.Parse(lID, line);
    std::string_view modes = key.ParseGeometry(lID, line);
    const std::string code = std::to_string(lID);
    const bool hasRectangle = modes.size() != TrimLeft(line).size();
    RequireModeDigit(code, modes, Kind::SupportMissing, Kind::SupportInvalid);
    RequireModeDigit(code, modes, Kind::ColourMissing, Kind::ColourInvalid);
    if (key.support == KEYMODE_NONE)
        return;
    if (!hasRectangle)
        throw TextFaultError({Kind::RectangleMissing, {code}});
    const bool hasPlace = key.width != 0 || key.height != 0;
    if (hasPlace && (key.width <= kGap || key.height <= kGap))
        throw TextFaultError({Kind::RectangleInvisible,
                              {code, std::to_string(static_cast<int>(key.width)),
                               std::to_string(static_cast<int>(key.height))}});
    const std::string_view caption = Trim(key.caption);
    if (caption.empty() && (Trim(key.longCaption).empty() || key.longCaption.starts_with("Hex(")))
        throw TextFaultError({Kind::CaptionMissing, {code}});
}

void RequireLanguageID(std::string_view text) {
    Integer id = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), id);
    if (error != std::errc() || end != text.data() + text.size() || id <= 0)
        throw TextFaultError({Kind::NotALanguageID, {std::string(text)}});
}

} // namespace

std::optional<LayoutFault> FaultIn(const QxlTextSource& source) {
    Long number = LayoutTextSource::kLanguageID;
    bool hasKeys = false;
    try {
        if (const std::string id = source.String(number); !id.empty())
            RequireLanguageID(id);
        for (Long key = KeyboardSequences::kMinKeyID; key <= KeyboardSequences::kMaxKeyID; ++key) {
            number = LayoutTextSource::kFirstKey + key;
            const std::string line = source.String(number);
            if (Trim(line).empty())
                continue;
            hasKeys = true;
            RequireKey(key, line);
        }
    } catch (const TextFaultError& error) {
        return LayoutFault{source.FileName(), source.LineOf(number), error.Fault()};
    }
    if (!hasKeys)
        return LayoutFault{source.FileName(), 0, {Kind::NoKeys}};
    return std::nullopt;
}

} // namespace qx
