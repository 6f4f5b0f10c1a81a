#include "app/ColourButton.h"

#include "views/KeyPainting.h"

#include <QAction>
#include <QColorDialog>
#include <QEvent>
#include <QPainter>

#include <utility>

namespace qx::app {

namespace {

constexpr int kMargin = 5; // between the button's frame and the swatch

Long FromQColor(const QColor& color) {
    return static_cast<Long>(color.blue() << 16 | color.green() << 8 | color.red());
}

} // namespace

ColourButton::ColourButton(std::function<Long()> defaultColour, QWidget* parent)
    : QPushButton(parent) {
    auto* useDefault = new QAction(tr("Use the default colour"), this);
    addAction(useDefault);
    setContextMenuPolicy(Qt::ActionsContextMenu);
    setIconSize({kMargin + 36, 16});
    setStyleSheet(QStringLiteral("text-align: left"));
    connect(useDefault, &QAction::triggered, this,
            [this, defaultColour = std::move(defaultColour)] { Pick(defaultColour()); });
    connect(this, &QPushButton::clicked, this, [this] { AskUser(); });
    ShowColour();
}

void ColourButton::SetColour(Long lColor) {
    m_colour = lColor;
    ShowColour();
}

void ColourButton::AskUser() {
    const QColor current = views::ToQColor(m_colour);
    const QColor chosen = QColorDialog::getColor(current, this, accessibleName());
    if (chosen.isValid() && chosen.rgb() != current.rgb())
        Pick(FromQColor(chosen));
}

void ColourButton::Pick(Long lColor) {
    SetColour(lColor);
    emit Picked(lColor);
}

void ColourButton::ShowColour() {
    const QColor color = views::ToQColor(m_colour);
    const qreal ratio = devicePixelRatioF();
    QPixmap swatch(iconSize() * ratio);
    swatch.setDevicePixelRatio(ratio);
    swatch.fill(Qt::transparent);
    QPainter painter(&swatch);
    painter.setBrush(color);
    painter.setPen(QPen(palette().color(QPalette::ButtonText), 1));
    painter.drawRect(
        QRectF(QPointF(), QSizeF(iconSize())).adjusted(kMargin + 0.5, 0.5, -0.5, -0.5));
    painter.end();
    setIcon(QIcon(swatch));
    const QString system = u' ' + tr("System colour");
    const QString number = u' ' + color.name().toUpper();
    setText(system); // the longest text, so that all have the same width
    setMinimumWidth(sizeHint().width());
    if (m_colour >= 0)
        setText(number);
}

void ColourButton::changeEvent(QEvent* event) {
    QPushButton::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowColour(); // a system colour may have changed
}

} // namespace qx::app
