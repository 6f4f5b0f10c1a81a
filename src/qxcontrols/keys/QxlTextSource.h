// QxlTextSource: the texts of a keyboard layout from a .qxl file.
//
// The file is UTF-8, at most 1 MiB, one text a line: NUMBER=TEXT, the text being all that follows
// the first "=". Empty lines and lines that begin with "#" are passed over; a byte order mark and
// CR LF line ends are tolerated. Any other line, a number above 1140 or one that stands twice, or
// a control character makes the open fail. String 1 is the layout's language id in decimal.
//
// Paths are UTF-8; where the machine's paths use "/", a "\" in them is taken as a separator.
#pragma once

#include "qxcontrols/keys/LayoutTextSource.h"

#include <map>
#include <string_view>

namespace qx {

class QxlTextSource final : public LayoutTextSource {
public:
    void Reset() override;
    bool Open(const std::string& sFilename) override;
    // Of the folder's .qxl files, in the order of their names, takes the first that is for this
    // language; if there is none, the first for the same primary language (another country's).
    bool OpenLanguage(Long& lLangID, const std::string& sFolder) override;
    [[nodiscard]] std::string String(Long lNumber) const override;

    // Names the file, and the line where it is a line that is wrong.
    [[nodiscard]] std::string Error() const override { return m_error; }
    [[nodiscard]] std::string Place(Long lNumber) const override;

    // The path of the open layout; empty when none is.
    [[nodiscard]] const std::string& FileName() const { return m_file.name; }

private:
    struct Line {
        std::size_t number;
        std::string text;
    };
    struct File {
        std::string name;
        std::map<Long, Line> lines;

        // Takes over a line; returns what is wrong with it, empty when nothing is.
        std::string ReadLine(std::size_t number, std::string_view line);
    };

    bool Use(const std::string& sFilename, std::string_view text);

    File m_file;
    std::string m_error;
};

} // namespace qx
