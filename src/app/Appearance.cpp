#include "app/Appearance.h"

#include "app/DesignedStyle.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace qx::app {

namespace {

bool IsDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < 128;
}

// The bevels are derived from the button's colour; DesignedStyle has the colours of lines.
QPalette PaletteOf(bool isDark) {
    const QColor window = isDark ? QColor(0x23, 0x26, 0x2A) : QColor(0xF3, 0xF4, 0xF6);
    QPalette palette(isDark ? QColor(0x33, 0x37, 0x3D) : QColor(0xE9, 0xEB, 0xEE), window);
    const QColor text = isDark ? QColor(0xE8, 0xEA, 0xED) : QColor(0x1B, 0x1E, 0x22);
    const QColor faint = isDark ? QColor(0xA4, 0xA9, 0xB0) : QColor(0x5B, 0x62, 0x6B);
    const QColor disabled = isDark ? QColor(0x8A, 0x8F, 0x96) : QColor(0x7F, 0x85, 0x8D);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, disabled);
    }
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, disabled);
    const QColor groups = isDark ? QColor(0x4E, 0x54, 0x5C) : QColor(0xC0, 0xC5, 0xCC);
    palette.setColor(QPalette::Mid, isDark ? QColor(0x82, 0x88, 0x90) : QColor(0x7A, 0x80, 0x88));
    palette.setColor(QPalette::Disabled, QPalette::Mid, groups);
    palette.setColor(QPalette::Midlight, groups);
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
    palette.setColor(QPalette::Disabled, QPalette::Button, window); // flatter: the text is read
    palette.setColor(QPalette::Disabled, QPalette::Highlight, groups);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, text);
    return palette;
}

// The look of the system's programs.
struct SystemLook {
    QString style = QApplication::style()->objectName();
    bool isDark = IsDark(QApplication::palette());
    // Not if the system has no appearance of its own and Qt uses its default.
    bool isOwn = style.compare(QLatin1String("fusion"), Qt::CaseInsensitive) != 0 ||
                 QApplication::palette() != QApplication::style()->standardPalette();
};

} // namespace

// The system's style paints no palette but the system's, so neither is used without the other.
void UseAppearance(Appearance appearance) {
    static const SystemLook system;
    const bool isAsSystem = appearance == Appearance::System;
    const bool isDesigned = qobject_cast<DesignedStyle*>(QApplication::style()) != nullptr;
    if (isAsSystem && system.isOwn) {
        if (isDesigned)
            QApplication::setStyle(QStyleFactory::create(system.style));
        QApplication::setPalette(QPalette());
        return;
    }
    if (!isDesigned)
        QApplication::setStyle(new DesignedStyle);
    QApplication::setPalette(
        PaletteOf(isAsSystem ? system.isDark : appearance == Appearance::Dark));
}

host::ColourSetId FittingColours() {
    return IsDark(QApplication::palette()) ? host::ColourSetId::Dark : host::ColourSetId::Light;
}

} // namespace qx::app
