// SheetContent: what a key sheet tells, before it is set on pages.
#pragma once

#include "sheet/KeySheet.h"
#include "views/KeyPainting.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace qx::sheet {

struct Column {
    QString heading;
    double share; // of the table's width; those of a table add up to 1
};

struct Table {
    std::vector<Column> columns;
    std::vector<QStringList> rows; // as many cells as columns
};

// A part under a heading of its own: a picture of keys, a table, or both.
struct Part {
    QString heading;
    std::vector<views::KeyCap> caps;
    QString note; // in place of a table
    Table table;
};

struct SheetContent {
    QString title;
    QString subtitle;
    QString date;
    std::vector<Part> parts;
};

// The content in the order in which it is printed. Layers, key modules and POS blocks without
// content are left out; the picture of the keyboard is always there. Texts are free of control
// characters, which neither format can hold.
[[nodiscard]] SheetContent ContentOf(const KeySheet& sheet);

} // namespace qx::sheet
