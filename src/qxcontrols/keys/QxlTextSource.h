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
#include "qxcontrols/keys/TextFault.h"

#include <map>
#include <optional>
#include <string_view>

namespace qx {

struct LayoutFault {
    std::string file{};   // or a folder
    std::size_t line = 0; // from 1; 0 for the whole file
    TextFault fault{};
};

// "us.qxl, line 12: position code 30: the support is missing".
[[nodiscard]] std::string WordsOf(const LayoutFault& fault);

class QxlTextSource final : public LayoutTextSource {
public:
    void Reset() override;
    bool Open(const std::string& sFilename) override;
    // Opens the first of the folder's .qxl files, sorted by name, for this language, or otherwise
    // the first for the same primary language (of another country).
    bool OpenLanguage(Long& lLangID, const std::string& sFolder) override;
    [[nodiscard]] std::string String(Long lNumber) const override;

    // Why the last open failed.
    [[nodiscard]] const LayoutFault& Fault() const { return m_fault; }
    // The same in English, with the file's name and, if a line is wrong, its number.
    [[nodiscard]] std::string Error() const override;
    [[nodiscard]] std::string Place(Long lNumber) const override;
    // The line of the text with this number; 0 if there is none.
    [[nodiscard]] std::size_t LineOf(Long lNumber) const;

    // The path of the open layout; empty if none is open.
    [[nodiscard]] const std::string& FileName() const { return m_file.name; }

private:
    struct Line {
        std::size_t number;
        std::string text;
    };
    using MaybeFault = std::optional<TextFault>;
    struct File {
        std::string name;
        std::map<Long, Line> lines;

        // Reads a line; returns the error in it.
        MaybeFault ReadLine(std::size_t number, std::string_view line);
    };

    bool Use(const std::string& sFilename, std::string_view text);
    bool Refuse(const std::string& sFilename, std::size_t line, TextFault fault);

    File m_file;
    LayoutFault m_fault;
};

} // namespace qx
