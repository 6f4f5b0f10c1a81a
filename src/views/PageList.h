// PageList: a list that chooses the page beside it, as wide as its entries.
#pragma once

#include <QListWidget>
#include <QStyledItemDelegate>

namespace qx::views {

class PageList : public QListWidget {
public:
    explicit PageList(QWidget* parent = nullptr) : QListWidget(parent) {
        setItemDelegate(new Roomy(this));
        setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // entries are elided instead
        setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Expanding);
        setMaximumWidth(280);
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return {80, 120}; }

private:
    // Adds padding around the entries.
    class Roomy : public QStyledItemDelegate {
    public:
        using QStyledItemDelegate::QStyledItemDelegate;
        [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const override {
            return QStyledItemDelegate::sizeHint(option, index) + QSize(16, 8);
        }
    };
};

} // namespace qx::views
