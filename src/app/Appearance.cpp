#include "app/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace qx::app {

namespace {

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

// Lines and bevels are derived from the button's colour.
QPalette PaletteOf(bool isDark) {
    const QColor window = isDark ? QColor(0x23, 0x26, 0x2A) : QColor(0xF3, 0xF4, 0xF6);
    QPalette palette(isDark ? QColor(0x33, 0x37, 0x3D) : QColor(0xE9, 0xEB, 0xEE), window);
    const QColor text = isDark ? QColor(0xE8, 0xEA, 0xED) : QColor(0x1B, 0x1E, 0x22);
    const QColor faint = isDark ? QColor(0xA4, 0xA9, 0xB0) : QColor(0x5B, 0x62, 0x6B);
    const QColor disabled = isDark ? QColor(0x7C, 0x81, 0x88) : QColor(0x8F, 0x95, 0x9D);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Base, isDark ? QColor(0x1B, 0x1D, 0x20) : Qt::white);
    palette.setColor(QPalette::AlternateBase,
                     isDark ? QColor(0x2B, 0x2F, 0x34) : QColor(0xEE, 0xF1, 0xF5));
    palette.setColor(QPalette::ToolTipBase, isDark ? QColor(0x33, 0x37, 0x3D) : Qt::white);
    palette.setColor(QPalette::BrightText, isDark ? Qt::white : Qt::black);
    palette.setColor(QPalette::Highlight,
                     isDark ? QColor(0x6F, 0xA8, 0xF5) : QColor(0x1D, 0x5F, 0xBF));
    palette.setColor(QPalette::HighlightedText, isDark ? Qt::black : Qt::white);
    palette.setColor(QPalette::Link, isDark ? QColor(0x6F, 0xA8, 0xF5) : QColor(0x1D, 0x5F, 0xBF));
    palette.setColor(QPalette::LinkVisited, palette.color(QPalette::Link));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, disabled);
    return palette;
}

} // namespace

// The system's own style is kept where its windows look as wanted anyway; others paint no palette
// but their own.
void UseAppearance(Appearance appearance) {
    static const QString systemStyle = QApplication::style()->objectName();
    static const bool isSystemDark = IsDark(QApplication::palette());
    const bool isDark = appearance == Appearance::Dark;
    const bool isAsSystem = appearance == Appearance::System || isDark == isSystemDark;
    const QString style = isAsSystem ? systemStyle : QStringLiteral("fusion");
    if (QApplication::style()->objectName().compare(style, Qt::CaseInsensitive) != 0)
        QApplication::setStyle(QStyleFactory::create(style));
    QApplication::setPalette(isAsSystem ? QPalette() : PaletteOf(isDark));
}

host::ColourSetId FittingColours() {
    return IsDark(QApplication::palette()) ? host::ColourSetId::Dark : host::ColourSetId::Light;
}

} // namespace qx::app
