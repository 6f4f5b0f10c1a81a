#include "views/ColorSwatch.h"

#include <QPainter>

#include <cmath>

namespace qx::views {

namespace {

// Black or white, whichever has more contrast.
QColor TextOn(const QColor& ground) {
    const auto linear = [](double part) { return std::pow(part, 2.2); };
    const double luminance = 0.2126 * linear(ground.redF()) + 0.7152 * linear(ground.greenF()) +
                             0.0722 * linear(ground.blueF());
    return luminance > 0.18 ? Qt::black : Qt::white;
}

} // namespace

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
    painter.setPen(TextOn(m_color));
    QFont font = this->font();
    font.setBold(isChecked());
    painter.setFont(font);
    painter.drawText(inner, Qt::AlignCenter, text());
}

} // namespace qx::views
