// RoomyRows: the height of the rows of all tables and lists of values.
#pragma once

#include <QStyledItemDelegate>

#include <algorithm>

namespace qx::views {

class RoomyRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override {
        constexpr int kGap = 8; // pixels
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.height() + kGap));
        return size;
    }
};

} // namespace qx::views
