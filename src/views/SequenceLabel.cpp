#include "views/SequenceLabel.h"

#include <QKeyEvent>
#include <QPainter>

namespace qx::views {

SequenceLabel::SequenceLabel(QWidget* parent) : QLabel(parent) {
    setFrameShape(QFrame::StyledPanel);
    setFocusPolicy(Qt::StrongFocus);
    setTextFormat(Qt::PlainText); // keys have names such as "<>"
    setWordWrap(true);
    setMargin(3);
    setMinimumHeight(fontMetrics().height() + 2 * (margin() + frameWidth()));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
    setAutoFillBackground(true);
    setCursor(Qt::PointingHandCursor);
}

void SequenceLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        emit KeyPressed();
    else
        QLabel::mouseReleaseEvent(event);
}

void SequenceLabel::keyPressEvent(QKeyEvent* event) {
    const bool isShortcut =
        (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    const bool isMove = event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab ||
                        event->key() == Qt::Key_Escape;
    if (event->text().isEmpty() || isShortcut || isMove)
        QLabel::keyPressEvent(event);
    else
        emit KeyPressed();
}

void SequenceLabel::focusInEvent(QFocusEvent* event) {
    update();
    QLabel::focusInEvent(event);
}

void SequenceLabel::focusOutEvent(QFocusEvent* event) {
    update();
    QLabel::focusOutEvent(event);
}

void SequenceLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QPainter painter(this);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

} // namespace qx::views
