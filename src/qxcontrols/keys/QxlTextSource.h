// QxlTextSource: the texts of a keyboard layout from a .qxl file.
//
// The file is UTF-8, at most 1 MiB, one text per line: NUMBER=TEXT, where TEXT is everything after
// the first "=". Empty lines and lines that begin with "#" are ignored; a byte order mark and CR LF
// line ends are accepted. Any other line, a number above 1140, a duplicate number or a control
// character makes the open fail. String 1 is the layout's language id in decimal.
//
// Paths are UTF-8; if the system's paths use "/", a "\" in them also counts as a separator.
#pragma once

#include "qxcontrols/keys/LayoutTextSource.h"

#include <map>
#include <string_view>

namespace qx {

class QxlTextSource final : public LayoutTextSource {
public:
    void Reset() override;
    bool Open(const std::string& sFilename) override;
    // Opens the first of the folder's .qxl files, sorted by name, for this language, or otherwise
    // the first for the same primary language (of another country).
    bool OpenLanguage(Long& lLangID, const std::string& sFolder) override;
    [[nodiscard]] std::string String(Long lNumber) const override;

    // The error with the file's name and, if a line is wrong, its number.
    [[nodiscard]] std::string Error() const override { return m_error; }
    [[nodiscard]] std::string Place(Long lNumber) const override;

    // The path of the open layout; empty if none is open.
    [[nodiscard]] const std::string& FileName() const { return m_file.name; }

private:
    struct Line {
        std::size_t number;
        std::string text;
    };
    struct File {
        std::string name;
        std::map<Long, Line> lines;

        // Reads a line; returns the error in it, or an empty text.
        std::string ReadLine(std::size_t number, std::string_view line);
    };

    bool Use(const std::string& sFilename, std::string_view text);

    File m_file;
    std::string m_error;
};

} // namespace qx
