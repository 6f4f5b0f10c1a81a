// KeySheet: a keyboard set-up on paper, to lie beside the till: the keyboard with its legends, and
// tables of the programmed keys, the layers, the POS blocks and the readers' headers.
//
// Pages are A4 landscape. Needs a QGuiApplication, of any platform. Texts are translated in the
// context "KeySheet". The same settings, texts, fonts and date give the same bytes.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

class QPagedPaintDevice;

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::host {
class Section;
}

namespace qx::sheet {

struct KeySheet {
    std::string keyboard;                 // its name; may be empty
    std::string document;                 // its name; empty where there is none
    std::string date;                     // as it is to be printed
    std::vector<host::Section*> sections; // what to tell; none is null
    QXKeyboardLayoutData& layout;         // loaded
};

// Writes the sheet into the file in one step: as a PDF, or as one tall SVG with the pages below one
// another, by the suffix; as a PDF alone on Windows. Throws host::Error: Usage for another suffix,
// FileFailed when the file cannot be written; the file is then as it was.
void WriteKeySheet(const KeySheet& sheet, const std::filesystem::path& file);

// Prepares the device for the sheet's pages, and paints them on it: a printer, say.
void SetKeySheetPage(QPagedPaintDevice& device);
void PaintKeySheet(const KeySheet& sheet, QPagedPaintDevice& device);

} // namespace qx::sheet
