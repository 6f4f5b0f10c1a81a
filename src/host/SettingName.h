// SettingName, SettingValue: which setting it is and what it is set to, as data. Each face words
// them in its own language; the English of the command line is here.
//
// A key has one name wherever it is met: its number as its legend counts it, and its caption.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

struct SectionInfo;

// One step on the way to a setting: "track 2", "layer 3", "F4", "header".
struct NamePart {
    std::string_view key; // of the member of a document; a constant
    std::string_view
        label;          // in English, a constant; empty where the number or the rest says it all
    std::string number; // "2", "F4", "30 (A)"; empty for what there is only one of

    bool operator==(const NamePart&) const = default;
};

struct SettingName {
    std::string_view section; // its key; a constant, like its title
    std::string_view title;   // in English
    std::vector<NamePart> parts;
    std::size_t elementParts = 0; // how many of the first parts name the element of a list

    bool operator==(const SettingName&) const = default;
};

// The section as a whole.
[[nodiscard]] SettingName NameOf(const SectionInfo& section);

struct SettingValue {
    enum class Kind {
        Text,    // a number, or a text or sequence in its own words
        Off,     // these two of a switch
        On,      //
        Empty,   // a sequence without codes
        None,    // there is no such setting
        Damaged, // these two of a section in a keyboard
        Sound,   //
    };
    Kind kind = Kind::Text;
    std::string text = {}; // of Text

    bool operator==(const SettingValue&) const = default;
};

// In English: "layered function key layer 3 F4 description", "layer 3 F4", "(empty)".
[[nodiscard]] std::string ToText(const SettingName& name);
[[nodiscard]] std::string ToText(std::span<const NamePart> parts);
[[nodiscard]] std::string ToText(const SettingValue& value);

} // namespace qx::host
