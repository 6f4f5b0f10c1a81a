#include "views/FlowLayout.h"

#include <QWidget>

#include <algorithm>

namespace qx::views {

FlowLayout::FlowLayout(int spacing, QWidget* parent, int lineSpacing)
    : QLayout(parent), m_lineSpacing(lineSpacing < 0 ? spacing : lineSpacing) {
    setSpacing(spacing);
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout() {
    qDeleteAll(m_items);
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const {
    return Arrange({0, 0, width, 0}, false);
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* item : m_items)
        size = size.expandedTo(item->minimumSize());
    const QMargins margins = contentsMargins();
    return size + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    Arrange(rect, true);
}

int FlowLayout::Arrange(const QRect& rect, bool isPlaced) const {
    const QRect area = rect.marginsRemoved(contentsMargins());
    int left = area.left();
    int top = area.top();
    int lineHeight = 0;
    int column = 1;
    if (m_isAligned && !m_items.empty())
        column = spacing() + (*std::ranges::min_element(
                                  m_items, {},
                                  [](const QLayoutItem* item) { return item->sizeHint().width(); }))
                                 ->sizeHint()
                                 .width();
    for (QLayoutItem* item : m_items) {
        if (item->isEmpty()) // a hidden widget
            continue;
        const QSize size(std::min(item->sizeHint().width(), area.width()),
                         item->sizeHint().height());
        if (left != area.left() && left + size.width() > area.right() + 1) {
            left = area.left();
            top += lineHeight + m_lineSpacing;
            lineHeight = 0;
        }
        if (isPlaced)
            item->setGeometry({QPoint(left, top + (item->alignment() & Qt::AlignVCenter
                                                       ? std::max(0, lineHeight - size.height()) / 2
                                                       : 0)),
                               size});
        // Slightly wider ones leave a smaller space.
        const int needed = size.width() + (m_isAligned ? spacing() / 3 : spacing());
        left += (needed + column - 1) / column * column;
        lineHeight = std::max(lineHeight, size.height());
    }
    return top + lineHeight - rect.top() + contentsMargins().bottom();
}

} // namespace qx::views
