// ConfigurationDocument: the file that holds one keyboard set-up.
//
// A document is JSON: a format name, a version, a note of the keyboard that it was read from, and
// one section for each module. This class reads and writes the frame; what stands in a section is
// the section's own affair (Section::Visit, Configuration).
#pragma once

#include "host/Error.h"
#include "host/Json.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace qx::host {

// A setting that a document holds otherwise than it is, so that it can be read again.
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
    // Where a document has the identifier of the keyboard that it was read from.
    static constexpr const char* kIdentifierPlace = "/layeredFuncKeys/guid";

    // A document without sections.
    ConfigurationDocument();

    // Reads the frame strictly. `name` names the document in errors. Throws Error(DocumentInvalid)
    // for anything but one JSON object of this format and version whose members are all different.
    [[nodiscard]] static ConfigurationDocument Parse(std::string_view text,
                                                     const std::string& name);
    // The same from a file; Error(FileFailed) when it cannot be read.
    [[nodiscard]] static ConfigurationDocument Load(const std::filesystem::path& path);

    [[nodiscard]] std::string ToText() const { return PrettyText(m_json); }
    [[nodiscard]] const Json& AsJson() const { return m_json; }
    [[nodiscard]] const std::string& Name() const { return m_name; }

    // The settings that could not be written into it as they are.
    [[nodiscard]] const std::vector<Loss>& Losses() const { return m_losses; }
    [[nodiscard]] std::vector<Loss>& Losses() { return m_losses; }

    // A section by its key (`keyboard` is one here); null when the document lacks it.
    [[nodiscard]] const Json* Find(std::string_view key) const;
    // The section, made when it is not there.
    [[nodiscard]] Json& Place(std::string_view key);

    // The identifier, as it is written there; empty when there is none (see IsIdentifier).
    [[nodiscard]] std::string Identifier() const;
    // For a user whose keyboard gets this identifier, in place of its own if it has one.
    [[nodiscard]] Error IdentifierWarning(bool replaces = true) const {
        return Error(replaces ? Cause::IdentifierReplaced : Cause::IdentifierGiven,
                     {.place = {.file = m_name}});
    }
    // Makes it a document that leaves every keyboard its own identifier.
    void RemoveIdentifier();

private:
    Json m_json;
    std::string m_name;
    std::vector<Loss> m_losses;
};

} // namespace qx::host
