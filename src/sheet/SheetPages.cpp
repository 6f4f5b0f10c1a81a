#include "sheet/SheetPages.h"

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace qx::sheet {

namespace {

constexpr double kMargin = 45;
constexpr double kWidth = SheetPages::kSize.width() - 2 * kMargin;
constexpr double kFooterTop = SheetPages::kSize.height() - kMargin;
constexpr double kBottom = kFooterTop - 8; // of the tables
constexpr double kDateWidth = 200;
constexpr double kGap = 12;              // between what is not of one piece
constexpr double kPadding = 6;           // of a cell, left and right
constexpr double kRowPadding = 3;        // above and below
constexpr int kRowsAtLeast = 3;          // of a table stand below its heading
constexpr int kLeastTextOnPaper = 4;     // pixels, at 96 to the inch
constexpr double kCapTextSize = 12;      // of a cap's caption, whatever the picture's scale
constexpr double kLargestScale = 1.8;    // of a picture, to its natural size
constexpr double kHighestPicture = 0.55; // of a page's height

constexpr QColor kInk(0x1A, 0x1A, 0x1A);
constexpr QColor kFaintInk(0x5A, 0x5A, 0x5A);
constexpr QColor kHeadingBar(0xE3, 0xE8, 0xEE);
constexpr QColor kRule(0xC4, 0xC9, 0xD0);

QStringList WrappedLines(const QString& text, const QFont& font, double width) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        lines += text.mid(line.textStart(), line.textLength()).trimmed();
    }
    layout.endLayout();
    return lines;
}

} // namespace

QFont SheetPages::FontOf(Style style) {
    struct Look {
        int pixels;
        bool isBold;
    };
    static constexpr Look kLooks[] = {{22, true}, {15, true}, {11, true}, {11, false}, {10, false}};
    const Look& look = kLooks[static_cast<std::size_t>(style)];
    QFont font = QGuiApplication::font();
    font.setPixelSize(look.pixels);
    font.setBold(look.isBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

double SheetPages::LineHeight(Style style) {
    return std::ceil(QFontMetricsF(FontOf(style)).height());
}

SheetPages::SheetPages(const SheetContent& content) : m_content(content) {
    NewPage();
    for (const Part& part : content.parts)
        AddPart(part);
    NumberPages();
}

void SheetPages::NewPage() {
    const bool isFirst = m_pages.empty();
    m_pages.emplace_back();
    m_top = kMargin;
    const double right = kMargin + kWidth;
    const double dateWidth = QFontMetricsF(FontOf(Style::Small)).horizontalAdvance(m_content.date);
    AddText({right - std::min(dateWidth, kDateWidth), m_top}, m_content.date, Style::Small,
            kDateWidth);
    const double width = kWidth - kDateWidth - kGap;
    if (isFirst) {
        AddText({kMargin, m_top}, m_content.title, Style::Title, width);
        m_top += LineHeight(Style::Title);
        AddText({kMargin, m_top}, m_content.subtitle, Style::Small, kWidth);
    } else {
        const double titleWidth =
            AddText({kMargin, m_top}, m_content.title, Style::Small, width / 2);
        AddText({kMargin + titleWidth + kGap, m_top}, m_content.subtitle, Style::Small,
                width - titleWidth - kGap);
    }
    m_top += LineHeight(Style::Small) + 4;
    m_pages.back().bars.push_back({{kMargin, m_top, kWidth, 0.75}, kRule});
    m_top += kGap;
}

double SheetPages::Left() const {
    return kBottom - m_top;
}

double SheetPages::AddText(QPointF topLeft, const QString& text, Style style, double width) {
    const QFontMetricsF metrics(FontOf(style));
    const QString shown = metrics.elidedText(text, Qt::ElideRight, width);
    if (!shown.isEmpty())
        m_pages.back().texts.push_back({topLeft + QPointF(0, metrics.ascent()), shown, style});
    return metrics.horizontalAdvance(shown);
}

void SheetPages::AddPart(const Part& part) {
    const double leastTable = LineHeight(Style::Heading) +
                              (kRowsAtLeast + 1) * (LineHeight(Style::Cell) + 2 * kRowPadding);
    const bool isFirst = &part == &m_content.parts.front();
    if (!isFirst && (!part.caps.empty() || Left() < leastTable + kGap))
        NewPage();
    AddHeading(part.heading);
    if (!part.caps.empty())
        AddPicture(part.caps);
    if (!part.note.isEmpty()) {
        AddText({kMargin, m_top}, part.note, Style::Cell, kWidth);
        m_top += LineHeight(Style::Cell) + kGap;
    }
    if (part.table.rows.empty())
        return;
    if (Left() < leastTable) {
        NewPage();
        AddHeading(part.heading);
    }
    AddColumnHeadings(part.table);
    for (const QStringList& row : part.table.rows)
        AddRow(part, Wrapped(part.table, row));
    m_top += 2 * kGap;
}

void SheetPages::AddPicture(const std::vector<views::KeyCap>& caps) {
    const QSizeF natural = views::KeyPlacing::NaturalSize(caps);
    const double scale =
        std::min({kWidth / natural.width(), kHighestPicture * kSize.height() / natural.height(),
                  kLargestScale});
    const QSizeF size = natural * scale;
    m_pages.back().pictures.push_back({QRectF(QPointF(kMargin, m_top), size), &caps});
    m_top += size.height() + kGap;
}

void SheetPages::AddHeading(const QString& heading) {
    AddText({kMargin, m_top}, heading, Style::Heading, kWidth);
    m_top += LineHeight(Style::Heading) + 6;
}

void SheetPages::AddColumnHeadings(const Table& table) {
    const double height = LineHeight(Style::ColumnHeading) + 2 * kRowPadding;
    m_pages.back().bars.push_back({{kMargin, m_top, kWidth, height}, kHeadingBar});
    double left = kMargin;
    for (const Column& column : table.columns) {
        const double width = column.share * kWidth;
        AddText({left + kPadding, m_top + kRowPadding}, column.heading, Style::ColumnHeading,
                width - 2 * kPadding);
        left += width;
    }
    m_top += height;
}

SheetPages::Cells SheetPages::Wrapped(const Table& table, const QStringList& row) {
    Cells cells;
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        cells.push_back(WrappedLines(row[static_cast<qsizetype>(i)], FontOf(Style::Cell),
                                     table.columns[i].share * kWidth - 2 * kPadding));
    return cells;
}

// A row goes onto one page where it can; one that is higher than a page goes on on the next.
void SheetPages::AddRow(const Part& part, const Cells& cells) {
    qsizetype lines = 1;
    for (const QStringList& cell : cells)
        lines = std::max(lines, cell.size());
    const double lineHeight = LineHeight(Style::Cell);
    const auto turnPage = [&] {
        NewPage();
        AddHeading(QCoreApplication::translate("KeySheet", "%1 (continued)").arg(part.heading));
        AddColumnHeadings(part.table);
    };
    const double height = static_cast<double>(lines) * lineHeight + 2 * kRowPadding;
    if (height > Left() && height < kSize.height() / 2)
        turnPage();
    m_top += kRowPadding;
    for (qsizetype line = 0; line < lines; ++line) {
        if (lineHeight + kRowPadding > Left()) {
            turnPage();
            m_top += kRowPadding;
        }
        double left = kMargin;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const double width = part.table.columns[i].share * kWidth;
            AddText({left + kPadding, m_top}, cells[i].value(line), Style::Cell, width - kPadding);
            left += width;
        }
        m_top += lineHeight;
    }
    m_top += kRowPadding;
    m_pages.back().bars.push_back({{kMargin, m_top - 0.5, kWidth, 0.5}, kRule});
}

void SheetPages::NumberPages() {
    const QFontMetricsF metrics(FontOf(Style::Small));
    for (std::size_t i = 0; i < m_pages.size(); ++i) {
        const QString number = QStringLiteral("%1/%2").arg(i + 1).arg(m_pages.size());
        const double left = kMargin + kWidth - metrics.horizontalAdvance(number);
        m_pages[i].texts.push_back({{left, kFooterTop + metrics.ascent()}, number, Style::Small});
    }
}

void SheetPages::Paint(QPainter& painter, int page, double pixelRatio) const {
    const Page& shown = m_pages[static_cast<std::size_t>(page)];
    for (const Bar& bar : shown.bars)
        painter.fillRect(bar.rect, bar.color);
    for (const Picture& picture : shown.pictures) {
        const views::KeyPlacing placing(*picture.caps, picture.area, pixelRatio);
        const double pointSize =
            kCapTextSize * 72 / 96 * views::kNaturalKeyHeight / placing.KeyHeight();
        views::PaintKeyCaps(painter, placing, *picture.caps, {pointSize, kLeastTextOnPaper});
    }
    for (const Text& text : shown.texts) {
        painter.setFont(FontOf(text.style));
        painter.setPen(text.style == Style::Small ? kFaintInk : kInk);
        painter.drawText(text.at, text.text);
    }
}

} // namespace qx::sheet
