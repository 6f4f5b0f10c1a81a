// SettingName, SettingValue: which setting it is and what it is set to, as data. Each face words
// them in its own language; the English of the command line is here.
//
// A key's number in a name is its KeyName or, for a function key, its legend.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

struct SectionInfo;

// A name given to an option by its vendor, in the languages of the programs.
struct OptionCaption {
    std::string english; // empty: it has no name
    std::string german;  // empty: as in English

    bool operator==(const OptionCaption&) const = default;
    // In the language with this code, "de".
    [[nodiscard]] const std::string& In(std::string_view language) const {
        return language == "de" && !german.empty() ? german : english;
    }
};

// A part of the way to a setting: "Track 2", "Layer 3", "F4", "Prefix".
struct NamePart {
    std::string_view key;         // of the member of a document; a constant
    std::string_view label;       // in English, a constant; empty where the other parts are enough
    std::string number;           // "2", "F4", "30 (A)"; empty for what there is only one of
    OptionCaption caption = {};   // replaces both
    std::string longCaption = {}; // of a key, in the layout: "Insert key"

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
        Text,    // a number, or keys or a sequence in words
        Quoted,  // a text of the user's
        Off,     // a switch
        On,      // a switch
        Empty,   // a sequence without codes
        None,    // there is no such setting
        Damaged, // a section of a keyboard
        Sound,   // a section that is not damaged
    };
    Kind kind = Kind::Text;
    std::string text = {}; // of Text, or without the quotation marks of Quoted

    bool operator==(const SettingValue&) const = default;
};

// The steps on the way from the section to the setting, "Layer 3, F4", "Description". The element
// of a list is one step, and the first. `wordOf` gives the word of a part that has one.
using PartWord = std::function<std::string(const NamePart&)>;
[[nodiscard]] std::vector<std::string> StepsOf(const SettingName& name, const PartWord& wordOf,
                                               std::string_view language);
// In English.
[[nodiscard]] std::vector<std::string> StepsOf(const SettingName& name);

// The title and the steps: "Layered function keys › Layer 3, F4 › Description".
[[nodiscard]] std::string JoinedSteps(const std::vector<std::string>& steps);
// In English.
[[nodiscard]] std::string ToText(const SettingName& name);
[[nodiscard]] std::string ToText(const SettingValue& value); // "(empty)"

} // namespace qx::host
