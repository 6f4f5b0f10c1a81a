// KeySheet: a keyboard configuration on paper, to keep beside the till: the keyboard with its
// legends, and tables of the programmed keys, the layers, the POS blocks and the readers' headers.
//
// Pages are A4 landscape. Needs a QGuiApplication on any platform. Texts are translated in the
// context "KeySheet". The same settings, texts, fonts and date give the same bytes.
#pragma once

#include "host/Section.h"

#include <QString>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class QPagedPaintDevice;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::sheet {

struct KeySheet {
    std::string keyboard;                 // its name; may be empty
    std::string document;                 // its name; empty if there is none
    std::string date;                     // as printed
    std::vector<host::Section*> sections; // the contents; none is null
    QXKeyboardLayoutData& layout;         // loaded
    // A section's title in the language of the sheet.
    std::function<QString(const host::SectionInfo&)> titleOf =
        [](const host::SectionInfo& section) {
            return QString::fromUtf8(section.title.data(), qsizetype(section.title.size()));
        };
};

// Writes the sheet to the file in one step, as a PDF or as one tall SVG with the pages below one
// another, depending on the suffix; on Windows only as a PDF. Throws host::Error: Usage for another
// suffix, FileFailed if the file cannot be written, which then leaves it unchanged.
void WriteKeySheet(const KeySheet& sheet, const std::filesystem::path& file);

// Sets up the device (a printer, for example) for the sheet's pages, and paints them on it.
void SetKeySheetPage(QPagedPaintDevice& device);
void PaintKeySheet(const KeySheet& sheet, QPagedPaintDevice& device);

} // namespace qx::sheet
