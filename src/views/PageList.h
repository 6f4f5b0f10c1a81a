// PageList: a list beside the page that it chooses, as wide as its entries.
#pragma once

#include <QListWidget>

namespace qx::views {

class PageList : public QListWidget {
public:
    explicit PageList(QWidget* parent = nullptr) : QListWidget(parent) {
        setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
        setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        setMaximumWidth(280);
        setTextElideMode(Qt::ElideRight);
    }
};

} // namespace qx::views
