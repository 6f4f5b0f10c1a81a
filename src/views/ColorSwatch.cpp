#include "views/ColorSwatch.h"

#include <QPainter>

namespace qx::views {

ColorSwatch::ColorSwatch(QWidget* parent) : QAbstractButton(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
}

void ColorSwatch::SetColor(const QColor& color) {
    m_color = color;
    update();
}

QSize ColorSwatch::sizeHint() const {
    const int side = fontMetrics().height() + 12;
    return {side, side};
}

void ColorSwatch::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(isEnabled() ? 1.0 : 0.35);
    const QRectF outer = QRectF(rect()).adjusted(1, 1, -1, -1);
    // The chosen colour has a ring around it, the focused one a dotted ring.
    if (isChecked() || hasFocus()) {
        const QColor ring =
            palette().color(isChecked() ? QPalette::WindowText : QPalette::PlaceholderText);
        painter.setPen(QPen(ring, isChecked() ? 2 : 1, hasFocus() ? Qt::DotLine : Qt::SolidLine));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(outer, 5, 5);
    }
    const QRectF inner = outer.adjusted(3, 3, -3, -3);
    painter.setPen(QPen(palette().color(QPalette::Mid), 1));
    painter.setBrush(m_color);
    painter.drawRoundedRect(inner, 3, 3);
    painter.setPen(m_color.lightnessF() > 0.55F || m_color.green() > 170 ? Qt::black : Qt::white);
    QFont font = this->font();
    font.setBold(isChecked());
    painter.setFont(font);
    painter.drawText(inner, Qt::AlignCenter, text());
}

} // namespace qx::views
