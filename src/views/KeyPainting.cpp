#include "views/KeyPainting.h"

#include "views/TextFitting.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <array>
#include <cmath>

namespace qx::views {

namespace {

// In parts of a plain key's height.
constexpr double kBoardMargin = 0.1;
constexpr double kRadius = 0.11;
constexpr double kSkirt = 0.07; // the cap's top is smaller than its foot by this at each side
constexpr double kSkirtBelow = 0.13;
constexpr double kRing = 0.075;
constexpr double kMark = 0.22;
constexpr double kTextMargin = 0.025;

constexpr double kLegendScale = 0.7;
constexpr double kLeastTextSize = 6.5; // pixels, at natural size

QPalette::ColorRole SystemColorRole(std::uint32_t index) {
    using P = QPalette;
    static constexpr std::array kRoles{P::Mid,         P::Window,     P::Highlight,
                                       P::Mid, // scroll bar, desktop
                                       P::Window,      P::Base,       P::WindowText,
                                       P::WindowText, // menu, window
                                       P::WindowText,  P::WindowText, P::Mid,
                                       P::Mid, // texts, borders
                                       P::Mid,         P::Highlight,  P::HighlightedText,
                                       P::Button, // highlight, face
                                       P::Dark,        P::Mid,        P::ButtonText,
                                       P::WindowText, // shadow, grey text
                                       P::Light,       P::Shadow,     P::Midlight,
                                       P::ToolTipText, // highlight, info
                                       P::ToolTipBase};
    return index < kRoles.size() ? kRoles[index] : P::Button;
}

// The relative luminance of a colour, 0 to 1.
double Luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

// Black or white, whichever reads better on the colour.
QColor Ink(const QColor& color) {
    const double luminance = Luminance(color) + 0.05;
    return 1.05 / luminance > luminance / 0.05 ? Qt::white : Qt::black;
}

QColor Mixed(const QColor& color, const QColor& other, double part) {
    const auto mix = [part](float a, float b) {
        return static_cast<float>(a * (1 - part) + b * part);
    };
    return QColor::fromRgbF(mix(color.redF(), other.redF()), mix(color.greenF(), other.greenF()),
                            mix(color.blueF(), other.blueF()));
}

double PlainKeyHeight(const std::vector<KeyCap>& caps) {
    double height = 0;
    for (const KeyCap& cap : caps)
        if (cap.place.height() > 0 && (height == 0 || cap.place.height() < height))
            height = cap.place.height();
    return height == 0 ? 1 : height;
}

QRectF Bounds(const std::vector<KeyCap>& caps) {
    QRectF bounds;
    for (const KeyCap& cap : caps)
        bounds |= cap.place;
    const double margin = kBoardMargin * PlainKeyHeight(caps);
    return bounds.adjusted(-margin, -margin, margin, margin);
}

// At least one pixel, and whole pixels.
double LineWidth(double width, const KeyPlacing& placing) {
    return std::max(1.0, std::round(width / placing.Pixel())) * placing.Pixel();
}

QRectF Shrunk(const QRectF& rect, double by) {
    return rect.adjusted(by, by, -by, -by);
}

// The flat top of a cap, where its texts and marks are.
QRectF TopOf(const QRectF& rect, const KeyPlacing& placing) {
    const double side = LineWidth(kSkirt * placing.KeyHeight(), placing);
    const double below = LineWidth(kSkirtBelow * placing.KeyHeight(), placing);
    const double above = LineWidth(0.03 * placing.KeyHeight(), placing);
    return rect.adjusted(side, above, -side, -below);
}

void PaintRaised(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                 const KeyPlacing& placing, KeyTouch touch) {
    const double radius = kRadius * placing.KeyHeight();
    const double pixel = placing.Pixel();
    const QColor edge = Mixed(cap.color, Qt::black, 0.55);
    const QColor color = touch == KeyTouch::Pressed   ? Mixed(cap.color, Qt::black, 0.15)
                         : touch == KeyTouch::Hovered ? Mixed(cap.color, Ink(cap.color), 0.12)
                                                      : cap.color;
    painter.setPen(QPen(edge, pixel));
    painter.setBrush(Mixed(color, Qt::black, 0.28));
    painter.drawRoundedRect(Shrunk(rect, pixel / 2), radius, radius);

    const QRectF top = TopOf(rect, placing);
    QLinearGradient light(top.topLeft(), top.bottomLeft());
    light.setColorAt(0, Mixed(color, Qt::white, 0.22));
    light.setColorAt(0.6, Mixed(color, Qt::white, 0.06));
    light.setColorAt(1, color);
    painter.setPen(QPen(Mixed(color, Qt::white, 0.3), pixel));
    painter.setBrush(light);
    painter.drawRoundedRect(Shrunk(top, pixel / 2), radius * 0.8, radius * 0.8);
}

void PaintFlat(QPainter& painter, const QRectF& rect, const KeyCap& cap, const KeyPlacing& placing,
               KeyTouch touch) {
    const double radius = kRadius * placing.KeyHeight();
    const double width = LineWidth(0.025 * placing.KeyHeight(), placing);
    QPen pen(Mixed(cap.color, Ink(cap.color), 0.35), width);
    pen.setDashPattern({3, 2});
    pen.setCapStyle(Qt::FlatCap);
    painter.setPen(pen);
    painter.setBrush(touch == KeyTouch::None ? cap.color : Mixed(cap.color, Ink(cap.color), 0.08));
    painter.drawRoundedRect(Shrunk(rect, width / 2), radius, radius);
}

// Appends the text to `texts`, in the font's size or smaller and in several lines if it must be,
// cut at its end if that does not help.
void AppendFitting(std::vector<KeyText>& texts, const QString& text, QFont font, double size,
                   const QRectF& area, Qt::Alignment align, const QColor& color, double pixel) {
    const QStringList lines = FittingLines(text, font, size, area.size(), pixel);
    const QFontMetricsF metrics(font);
    const double height = metrics.height() * static_cast<double>(lines.size());
    double top = align & Qt::AlignVCenter ? area.center().y() - height / 2 : area.top();
    for (const QString& line : lines) {
        const QString shown = metrics.elidedText(line, Qt::ElideRight, area.width());
        const double spare = area.width() - metrics.horizontalAdvance(shown);
        KeyText prepared{font, QStaticText(shown), {area.left(), top}, color};
        if (align & Qt::AlignHCenter)
            prepared.at.rx() += spare / 2;
        prepared.text.setTextFormat(Qt::PlainText);
        prepared.text.setPerformanceHint(QStaticText::AggressiveCaching);
        prepared.text.prepare({}, font);
        texts.push_back(prepared);
        top += metrics.height();
    }
}

} // namespace

QColor ToQColor(std::int32_t lColor) {
    const auto value = static_cast<std::uint32_t>(lColor);
    if (value & 0x80000000U)
        return QGuiApplication::palette().color(SystemColorRole(value & 0xFFU));
    return {static_cast<int>(value & 0xFFU), static_cast<int>(value >> 8U & 0xFFU),
            static_cast<int>(value >> 16U & 0xFFU)};
}

KeyPlacing::KeyPlacing(const std::vector<KeyCap>& caps, const QRectF& area, double pixelRatio)
    : m_pixelRatio(pixelRatio) {
    const QRectF bounds = Bounds(caps);
    m_scale =
        std::max(0.0, std::min(area.width() / bounds.width(), area.height() / bounds.height()));
    m_keyHeight = PlainKeyHeight(caps) * m_scale;
    m_origin = area.center() - bounds.center() * m_scale;
    m_board = Map(bounds);
}

QRectF KeyPlacing::Map(const QRectF& place) const {
    const auto onPixel = [this](double value) {
        return std::round(value * m_pixelRatio) / m_pixelRatio;
    };
    return {QPointF(onPixel(place.left() * m_scale + m_origin.x()),
                    onPixel(place.top() * m_scale + m_origin.y())),
            QPointF(onPixel(place.right() * m_scale + m_origin.x()),
                    onPixel(place.bottom() * m_scale + m_origin.y()))};
}

QSizeF KeyPlacing::NaturalSize(const std::vector<KeyCap>& caps) {
    return Bounds(caps).size() * (kNaturalKeyHeight / PlainKeyHeight(caps));
}

void PaintKeyBody(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                  const KeyPlacing& placing, KeyTouch touch) {
    const bool isFlat = cap.state == KeyState::Unused;
    if (isFlat)
        PaintFlat(painter, rect, cap, placing, touch);
    else
        PaintRaised(painter, rect, cap, placing, touch);

    const QColor ink = Ink(cap.color);
    QRectF inside = isFlat ? rect : TopOf(rect, placing); // where the mark goes
    const double radius = kRadius * placing.KeyHeight();
    if (cap.isCurrent) {
        const double width = LineWidth(kRing * placing.KeyHeight(), placing);
        painter.setPen(QPen(ink, width));
        painter.setBrush(Qt::NoBrush);
        // Inside the cap's edge, whose colour sets it off from the board.
        const double edge = LineWidth(0.04 * placing.KeyHeight(), placing);
        painter.drawRoundedRect(Shrunk(rect, edge + width / 2), radius * 0.8, radius * 0.8);
        inside &= Shrunk(rect, edge + width);
    }
    if (cap.state == KeyState::Programmed) {
        const double size = kMark * placing.KeyHeight();
        QPainterPath outline;
        outline.addRoundedRect(inside, radius * 0.8, radius * 0.8);
        QPainterPath corner(inside.topRight());
        corner.lineTo(inside.topRight() - QPointF(size, 0));
        corner.lineTo(inside.topRight() + QPointF(0, size));
        corner.closeSubpath();
        painter.fillPath(corner & outline, ink);
    }
}

std::vector<KeyText> KeyTexts(const QRectF& rect, const KeyCap& cap, const KeyPlacing& placing,
                              double pointSize) {
    const double size =
        std::max(kLeastTextSize, pointSize * 96 / 72 * placing.KeyHeight() / kNaturalKeyHeight);
    const QRectF top = Shrunk(TopOf(rect, placing),
                              (kTextMargin + (cap.isCurrent ? 0.05 : 0)) * placing.KeyHeight());
    QFont font = QGuiApplication::font();
    font.setBold(cap.isBold);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QColor ink = Ink(cap.color);
    const QColor color = cap.state == KeyState::Unused ? Mixed(cap.color, ink, 0.7) : ink;

    std::vector<KeyText> texts;
    QRectF below = top;
    if (!cap.legend.isEmpty()) {
        QFont small = font;
        small.setBold(false);
        QRectF area = top;
        if (cap.state == KeyState::Programmed)
            area.setRight(area.right() - kMark * placing.KeyHeight());
        area.setHeight(kLegendScale * size * 1.3);
        AppendFitting(texts, cap.legend, small, size * kLegendScale, area, Qt::AlignLeft, color,
                      placing.Pixel());
        below.setTop(area.bottom());
    }
    if (!cap.caption.isEmpty())
        AppendFitting(texts, cap.caption, font, size * cap.textScale, below, Qt::AlignCenter, color,
                      placing.Pixel());
    return texts;
}

void PaintKeyText(QPainter& painter, const KeyText& text) {
    painter.setFont(text.font);
    painter.setPen(text.color);
    painter.drawStaticText(text.at, text.text);
}

void PaintKeyFocus(QPainter& painter, const QRectF& rect, const KeyPlacing& placing) {
    const double width = LineWidth(0.07 * placing.KeyHeight(), placing);
    const double line = LineWidth(0.02 * placing.KeyHeight(), placing);
    const double radius = kRadius * placing.KeyHeight();
    const QPalette palette = QGuiApplication::palette();
    // Two colours, so that the ring stands out from any cap.
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette.color(QPalette::Base), line));
    painter.drawRoundedRect(Shrunk(rect, -line / 2), radius, radius);
    painter.setPen(QPen(palette.color(QPalette::Highlight), width));
    painter.drawRoundedRect(Shrunk(rect, -line - width / 2), radius + width, radius + width);
}

void PaintKeyCaps(QPainter& painter, const QRectF& area, const std::vector<KeyCap>& caps,
                  double pointSize, int focused) {
    if (!caps.empty())
        PaintKeyCaps(painter, KeyPlacing(caps, area, painter.device()->devicePixelRatioF()), caps,
                     pointSize, focused);
}

void PaintKeyCaps(QPainter& painter, const KeyPlacing& placing, const std::vector<KeyCap>& caps,
                  double pointSize, int focused) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    for (const KeyCap& cap : caps) {
        const QRectF rect = placing.Map(cap.place);
        PaintKeyBody(painter, rect, cap, placing);
        for (const KeyText& text : KeyTexts(rect, cap, placing, pointSize))
            PaintKeyText(painter, text);
    }
    for (const KeyCap& cap : caps)
        if (cap.index == focused)
            PaintKeyFocus(painter, placing.Map(cap.place), placing);
    painter.restore();
}

} // namespace qx::views
