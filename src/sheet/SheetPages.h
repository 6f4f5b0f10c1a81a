// SheetPages: divides a key sheet's content into pages.
//
// A part with a picture starts a new page; a table that does not fit continues on the next page,
// with its heading and column headings repeated. Long cells are wrapped, long headings cut off.
// Every page has the date, a number and, from the second on, the sheet's title.
#pragma once

#include "sheet/SheetContent.h"

#include <QFont>
#include <QSizeF>

class QPainter;

namespace qx::sheet {

class SheetPages {
public:
    // Page size in 1/96 inch: A4 landscape.
    static constexpr QSizeF kSize{297 / 25.4 * 96, 210 / 25.4 * 96};

    // The content outlives the pages.
    explicit SheetPages(const SheetContent& content);

    [[nodiscard]] int Count() const { return static_cast<int>(m_pages.size()); }
    // Paints a page, counted from 0, at the painter's origin. A unit is 1/96 inch; `pixelRatio` is
    // its size in pixels of the device.
    void Paint(QPainter& painter, int page, double pixelRatio) const;

private:
    enum class Style { Title, Heading, ColumnHeading, Cell, Small };
    struct Text {
        QPointF at; // the start of its base line
        QString text;
        Style style;
    };
    struct Bar {
        QRectF rect;
        QColor color;
    };
    struct Picture {
        QRectF area;
        const std::vector<views::KeyCap>* caps;
    };
    struct Page {
        std::vector<Bar> bars;
        std::vector<Picture> pictures;
        std::vector<Text> texts;
    };
    using Cells = std::vector<QStringList>; // of a row: the lines of each cell

    [[nodiscard]] static QFont FontOf(Style style);
    [[nodiscard]] static double LineHeight(Style style);
    [[nodiscard]] static Cells Wrapped(const Table& table, const QStringList& row);

    void NewPage();
    [[nodiscard]] double Left() const; // free height below m_top
    // Adds a line of text, cut off if it is too wide, and returns its width.
    double AddText(QPointF topLeft, const QString& text, Style style, double width);
    void AddPart(const Part& part);
    void AddPicture(const std::vector<views::KeyCap>& caps);
    void AddHeading(const QString& heading);
    void AddColumnHeadings(const Table& table);
    void AddRow(const Part& part, const Cells& cells);
    void NumberPages();

    const SheetContent& m_content;
    std::vector<Page> m_pages;
    double m_top = 0; // where the next item goes
};

} // namespace qx::sheet
