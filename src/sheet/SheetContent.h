// SheetContent: the content of a key sheet before it is divided into pages.
#pragma once

#include "sheet/KeySheet.h"
#include "views/KeyPainting.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace qx::sheet {

struct Column {
    QString heading;
    double share; // of the table's width; the shares of a table add up to 1
};

struct Table {
    std::vector<Column> columns;
    std::vector<QStringList> rows; // each with one cell per column
};

// A part under its own heading: a picture of keys, a table, or both.
struct Part {
    QString heading;
    std::vector<views::KeyCap> caps;
    QString note; // replaces a missing table
    Table table;
};

struct SheetContent {
    QString title;
    QString subtitle;
    QString date;
    std::vector<Part> parts;
};

// The content in printing order. Layers, key modules and POS blocks without content are left out;
// the picture of the keyboard is always included. Texts are free of control characters, which
// neither format allows.
[[nodiscard]] SheetContent ContentOf(const KeySheet& sheet);

} // namespace qx::sheet
