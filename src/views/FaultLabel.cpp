#include "views/FaultLabel.h"

#include <QEvent>
#include <QPalette>

namespace qx::views {

FaultLabel::FaultLabel(QWidget* parent) : QLabel(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    setTextFormat(Qt::PlainText);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    TakeColor();
}

void FaultLabel::TakeColor() {
    const bool isDark = palette().color(QPalette::Window).lightness() < 128;
    const QColor red = isDark ? QColor(255, 138, 128) : QColor(176, 0, 32);
    if (palette().color(QPalette::WindowText) == red)
        return;
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText, red);
    setPalette(colors);
}

void FaultLabel::changeEvent(QEvent* event) {
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        TakeColor();
}

} // namespace qx::views
