// ConfigurationDocument: the file with one keyboard configuration.
//
// A document is JSON: a format name, a version, a note about the keyboard it was read from, and one
// section for each module. This class reads and writes the frame; the contents of a section are
// defined by that section (Section::Visit, Configuration).
#pragma once

#include "host/Error.h"
#include "host/Json.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace qx::host {

// A setting that differs in the document from its real value, so that the document can be read.
struct Loss {
    enum class Kind { NumberLimited, TextCut, CodesLeftOut, SequenceCut };
    Kind kind;
    std::string place; // a JSON pointer
};

class ConfigurationDocument {
public:
    static constexpr std::string_view kFormat = "qx-configuration";
    static constexpr int kVersion = 1;
    static constexpr std::string_view kKeyboardKey = "keyboard";
    // The place of the identifier of the keyboard that the document was read from.
    static constexpr const char* kIdentifierPlace = "/layeredFuncKeys/guid";

    // A document without sections.
    ConfigurationDocument();

    // Reads the frame strictly. `name` is used for the document in errors. Throws
    // Error(DocumentInvalid) for anything except one JSON object of this format and version without
    // duplicate members.
    [[nodiscard]] static ConfigurationDocument Parse(std::string_view text,
                                                     const std::string& name);
    // The same from a file; throws Error(FileFailed) if it cannot be read.
    [[nodiscard]] static ConfigurationDocument Load(const std::filesystem::path& path);

    [[nodiscard]] std::string ToText() const { return PrettyText(m_json); }
    [[nodiscard]] const Json& AsJson() const { return m_json; }
    [[nodiscard]] const std::string& Name() const { return m_name; }

    // The settings that could not be written exactly.
    [[nodiscard]] const std::vector<Loss>& Losses() const { return m_losses; }
    [[nodiscard]] std::vector<Loss>& Losses() { return m_losses; }

    // The section with this key (`keyboard` counts as one); null if it is not in the document.
    [[nodiscard]] const Json* Find(std::string_view key) const;
    // The section, created if it does not exist.
    [[nodiscard]] Json& Place(std::string_view key);

    // The identifier as written in the document; empty if there is none (see IsIdentifier).
    [[nodiscard]] std::string Identifier() const;
    // A warning that a keyboard will get this identifier, instead of its own if it has one.
    [[nodiscard]] Error IdentifierWarning(bool replaces = true) const {
        return Error(replaces ? Cause::IdentifierReplaced : Cause::IdentifierGiven,
                     {.place = {.file = m_name}});
    }
    // Removes the identifier, so that every keyboard keeps its own.
    void RemoveIdentifier();

private:
    Json m_json;
    std::string m_name;
    std::vector<Loss> m_losses;
};

} // namespace qx::host
