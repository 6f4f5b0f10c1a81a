#include "views/BesideOrBelow.h"

#include <QEvent>

#include <algorithm>

namespace qx::views {

namespace {

// Of the height, for the second widget; whatever it shows, the first keeps its size.
constexpr double kPartBelow = 0.41;

} // namespace

BesideOrBelow::BesideOrBelow(QWidget* first, QWidget* second) : QSplitter(Qt::Horizontal) {
    addWidget(first);
    addWidget(second);
    setStretchFactor(0, 3);
    setStretchFactor(1, 1);
    setChildrenCollapsible(false);
    connect(this, &QSplitter::splitterMoved, this, [this] { m_isMoved = true; });
}

// As narrow as one of them, or it would never be made so narrow that the second moves.
QSize BesideOrBelow::minimumSizeHint() const {
    const QSize hint = QSplitter::minimumSizeHint();
    return {std::max(widget(0)->minimumSizeHint().width(), widget(1)->minimumSizeHint().width()),
            hint.height()};
}

// The minimum sizes of the two may have changed, or the second may have moved.
bool BesideOrBelow::event(QEvent* event) {
    const bool isDone = QSplitter::event(event);
    if (event->type() == QEvent::LayoutRequest && !m_isMoved)
        Share();
    return isDone;
}

void BesideOrBelow::resizeEvent(QResizeEvent* event) {
    const bool isBelow =
        width() < widget(0)->sizeHint().width() + handleWidth() + widget(1)->sizeHint().width();
    if (isBelow != (orientation() == Qt::Vertical)) {
        setOrientation(isBelow ? Qt::Vertical : Qt::Horizontal);
        m_isMoved = false;
        emit BelowChanged(isBelow);
    }
    QSplitter::resizeEvent(event);
    if (!m_isMoved)
        Share();
}

void BesideOrBelow::Share() {
    const bool isBelow = orientation() == Qt::Vertical;
    const int second =
        isBelow ? static_cast<int>(kPartBelow * height()) : widget(1)->sizeHint().width();
    setSizes({std::max(0, (isBelow ? height() : width()) - handleWidth() - second), second});
}

} // namespace qx::views
