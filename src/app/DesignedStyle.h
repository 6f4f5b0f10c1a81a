// DesignedStyle: Fusion with lines, knobs and marks that are seen on dark windows too.
//
// Fusion's lines are darker than the window. Here the palette has their colours: Mid for what the
// user operates, Midlight around groups.
#pragma once

#include <QCache>
#include <QPalette>
#include <QProxyStyle>

#include <utility>

class QStyleOptionToolButton;

namespace qx::app {

class DesignedStyle : public QProxyStyle {
    Q_OBJECT
public:
    DesignedStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    // Long texts of buttons keep a distance from their edges, too.
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& contents,
                                         const QWidget* widget) const override;
    // The distances of layouts are of the grid.
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    // The buttons of dialogs have no icons: the system's would be of another set.
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returned) const override;
    // In messages and fields, those of the application.
    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const override;

private:
    void DrawLabel(const QStyleOptionToolButton& button, QPainter* painter,
                   const QWidget* widget) const;
    template <typename Option>
    [[nodiscard]] Option Lined(const Option& option, QPalette::ColorRole line) const;

    // Kept, because Fusion keeps images of what it has drawn with a palette.
    using Key = std::pair<std::pair<qint64, int>, int>;
    mutable QCache<Key, QPalette> m_palettes;
};

} // namespace qx::app
