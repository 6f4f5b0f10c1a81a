#include "views/KeyPainting.h"

#include "views/TextFitting.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPaintDevice>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace qx::views {

namespace {

// In parts of a plain key's height.
constexpr double kRadius = 0.12;
constexpr double kEdge = 0.02;           // the line around a cap
constexpr double kFoot = 0.05;           // what is seen of the cap's front, below its top
constexpr double kProgrammedFoot = 0.11; // the same of a programmed key, and darker
constexpr double kRing = 0.05;           // what is seen around the current cap, besides its edge
constexpr double kTextMargin = 0.03;
constexpr double kJoinedGap = 0.2;  // keys of a group are joined across a gap up to this
constexpr double kGroupLine = 0.04; // not wider than a gap
constexpr double kDot = 0.17;

constexpr double kLegendScale = 0.75;
constexpr int kLeastCommonStretch = 66;

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

// At least one pixel, and whole pixels.
double LineWidth(double width, const KeyPlacing& placing) {
    return std::max(1.0, std::round(width / placing.Pixel())) * placing.Pixel();
}

QRectF Shrunk(const QRectF& rect, double by) {
    return rect.adjusted(by, by, -by, -by);
}

// The flat top of a cap, where its texts are.
QRectF TopOf(const QRectF& rect, const KeyCap& cap, const KeyPlacing& placing) {
    const double edge = LineWidth(kEdge * placing.KeyHeight(), placing);
    const double foot = cap.state == KeyState::Unused       ? edge
                        : cap.state == KeyState::Programmed ? kProgrammedFoot * placing.KeyHeight()
                                                            : kFoot * placing.KeyHeight();
    return rect.adjusted(edge, edge, -edge, -LineWidth(foot, placing));
}

void PaintRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(rect, radius, radius);
}

// The colour of a cap's edge and foot.
QColor FootColor(const KeyCap& cap) {
    const double part = cap.state == KeyState::Unused       ? 0.12
                        : cap.state == KeyState::Programmed ? 0.6
                                                            : 0.3;
    return Mixed(cap.color, Ink(cap.color), part);
}

// The gap between two places that lie side by side, and `into` of each; empty where they do not, or
// are further apart.
QRectF BridgeBetween(const QRectF& a, const QRectF& b, double nearby, double into) {
    const double left = std::max(a.left(), b.left());
    const double right = std::min(a.right(), b.right());
    const double top = std::max(a.top(), b.top());
    const double bottom = std::min(a.bottom(), b.bottom());
    if (right > left && top >= bottom && top - bottom <= nearby) // one above the other
        return {QPointF(left, bottom - into), QPointF(right, top + into)};
    if (bottom > top && left >= right && left - right <= nearby) // side by side
        return {QPointF(right - into, top), QPointF(left + into, bottom)};
    return {};
}

// A text of a cap, in the font's size or smaller and in several lines if it must be.
struct FittedText {
    QFont font;
    QStringList lines;
    QRectF area;
    Qt::Alignment align;
    QColor color;
};

FittedText Fitted(const QString& text, QFont font, double size, const QRectF& area,
                  Qt::Alignment align, const QColor& color, int leastPixels) {
    const QStringList lines = FittingLines(text, font, size, area.size(), leastPixels);
    return {font, lines, area, align, color};
}

double PixelsOf(const KeyTextSize& textSize, const KeyPlacing& placing) {
    return std::max<double>(textSize.leastPixels,
                            textSize.points * 96 / 72 * placing.KeyHeight() / kNaturalKeyHeight);
}

// The legend and the caption, if there are.
std::vector<FittedText> FittedTexts(const QRectF& rect, const KeyCap& cap,
                                    const KeyPlacing& placing, const KeyTextSize& textSize) {
    const double size = PixelsOf(textSize, placing);
    const QRectF top = Shrunk(TopOf(rect, cap, placing), kTextMargin * placing.KeyHeight());
    QFont font = QGuiApplication::font();
    font.setBold(cap.isBold);
    font.setStretch(textSize.stretch);
    font.setHintingPreference(QFont::PreferNoHinting);
    const QColor ink = Ink(cap.color);
    const QColor color = cap.state == KeyState::Unused ? Mixed(cap.color, ink, 0.7) : ink;
    const QColor legend = cap.caption.isEmpty() ? color : Mixed(cap.color, ink, 0.85);

    std::vector<FittedText> texts;
    QRectF below = top;
    if (!cap.legend.isEmpty()) {
        QFont small = font;
        small.setBold(false);
        const double smallSize = std::max<double>(textSize.leastPixels, size * kLegendScale);
        QRectF area = top;
        if (!cap.caption.isEmpty())
            area.setHeight(std::min(smallSize * 1.3, top.height() / 2));
        texts.push_back(Fitted(cap.legend, small, smallSize, area, Qt::AlignLeft, legend,
                               textSize.leastPixels));
        below.setTop(area.bottom());
    }
    if (!cap.caption.isEmpty())
        texts.push_back(Fitted(cap.caption, font, size * cap.textScale, below, Qt::AlignCenter,
                               color, textSize.leastPixels));
    return texts;
}

// Appends the lines to `texts`, cut at their ends where they do not fit.
void AppendLines(std::vector<KeyText>& texts, const FittedText& fitted) {
    const QFontMetricsF metrics(fitted.font);
    const QRectF& area = fitted.area;
    const double height = HeightOfLines(metrics, fitted.lines.size());
    const double spare = area.height() - height; // less than 0: blank parts go beyond
    double top = area.top() + (fitted.align & Qt::AlignVCenter || spare < 0 ? spare / 2 : 0);
    for (const QString& line : fitted.lines) {
        const QString shown = metrics.elidedText(line, Qt::ElideRight, area.width());
        const double spare = area.width() - metrics.horizontalAdvance(shown);
        KeyText prepared{fitted.font, QStaticText(shown), {area.left(), top}, fitted.color};
        if (fitted.align & Qt::AlignHCenter)
            prepared.at.rx() += spare / 2;
        prepared.text.setTextFormat(Qt::PlainText);
        prepared.text.setPerformanceHint(QStaticText::AggressiveCaching);
        prepared.text.prepare({}, fitted.font);
        texts.push_back(prepared);
        top += LineStep(metrics);
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

void PaintKeyBody(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                  const KeyPlacing& placing, KeyTouch touch) {
    const double radius = kRadius * placing.KeyHeight();
    const QColor ink = Ink(cap.color);
    const double shade = touch == KeyTouch::Pressed ? 0.18 : touch == KeyTouch::Hovered ? 0.07 : 0;
    PaintRounded(painter, rect, radius, FootColor(cap));
    PaintRounded(painter, TopOf(rect, cap, placing), radius * 0.85, Mixed(cap.color, ink, shade));
}

std::vector<KeyText> KeyTexts(const QRectF& rect, const KeyCap& cap, const KeyPlacing& placing,
                              const KeyTextSize& textSize) {
    std::vector<KeyText> texts;
    for (const FittedText& fitted : FittedTexts(rect, cap, placing, textSize))
        AppendLines(texts, fitted);
    return texts;
}

KeyTextSize CommonTextSize(const std::vector<KeyCap>& caps, const KeyPlacing& placing,
                           const KeyTextSize& wanted) {
    const auto forEach = [&](const KeyTextSize& size, const auto& use) {
        for (const KeyCap& cap : caps)
            if (cap.state != KeyState::Programmed)
                for (const FittedText& text :
                     FittedTexts(placing.Map(cap.place), cap, placing, size))
                    use(text);
    };
    KeyTextSize common = wanted;
    forEach(wanted, [&](const FittedText& text) {
        if (text.font.stretch() >= kLeastCommonStretch)
            common.stretch = std::min(common.stretch, text.font.stretch());
    });
    double pixels = PixelsOf(wanted, placing);
    forEach(common, [&](const FittedText& text) {
        if (text.font.stretch() == common.stretch && text.align & Qt::AlignHCenter)
            pixels = std::min<double>(pixels, text.font.pixelSize());
    });
    common.points = pixels * 72 / 96 * kNaturalKeyHeight / placing.KeyHeight();
    return common;
}

void PaintKeyText(QPainter& painter, const KeyText& text) {
    painter.setFont(text.font);
    painter.setPen(text.color);
    painter.drawStaticText(text.at, text.text);
}

void PaintKeyStruck(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                    const KeyPlacing& placing) {
    QColor color = Ink(cap.color);
    color.setAlphaF(0.6F); // the texts are still read
    painter.setPen(QPen(color, LineWidth(0.03 * placing.KeyHeight(), placing)));
    const QRectF within = Shrunk(TopOf(rect, cap, placing), kTextMargin * placing.KeyHeight());
    painter.drawLine(within.bottomLeft(), within.topRight());
}

void PaintKeyCurrent(QPainter& painter, const QRectF& rect, const KeyPlacing& placing) {
    const double edge = LineWidth(kEdge * placing.KeyHeight(), placing);
    const double around = LineWidth(kRing * placing.KeyHeight(), placing);
    const double radius = kRadius * placing.KeyHeight() + (around - edge) / 2;
    painter.setPen(QPen(QGuiApplication::palette().color(QPalette::WindowText), edge + around));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(Shrunk(rect, (edge - around) / 2), radius, radius);
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

void PaintKeySelected(QPainter& painter, const QRectF& rect, const KeyPlacing& placing) {
    const double height = placing.KeyHeight();
    const double width = LineWidth(0.07 * height, placing);
    const double radius = kRadius * height;
    const QColor frame = QGuiApplication::palette().color(QPalette::Highlight);
    QColor tint = frame;
    tint.setAlphaF(0.2F);
    painter.setPen(QPen(frame, width));
    painter.setBrush(tint);
    painter.drawRoundedRect(rect, radius, radius);
}

void PaintKeyTick(QPainter& painter, const QRectF& rect, const KeyPlacing& placing) {
    const QPalette palette = QGuiApplication::palette();
    const double size = 0.3 * placing.KeyHeight();
    const QRectF corner(rect.right() - size, rect.top(), size, size); // beside the legend
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawEllipse(corner);
    QPainterPath tick(corner.topLeft() + QPointF(0.25, 0.52) * size);
    tick.lineTo(corner.topLeft() + QPointF(0.44, 0.72) * size);
    tick.lineTo(corner.topLeft() + QPointF(0.76, 0.3) * size);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(palette.color(QPalette::HighlightedText), std::max(1.0, 0.13 * size),
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(tick);
}

void PaintKeyDot(QPainter& painter, const QRectF& rect, const KeyCap& cap,
                 const KeyPlacing& placing) {
    const double height = placing.KeyHeight();
    const double radius = std::max(2.5, kDot * height / 2);
    const double line = LineWidth(0.03 * height, placing);
    painter.setPen(QPen(Ink(cap.color), line)); // stands out from caps of any colour
    painter.setBrush(kDotColor);
    painter.drawEllipse(rect.bottomRight() - QPointF(kDot, kDot) * height / 2, radius, radius);
}

// One plate below the keys, of the colour of their edges: in the gaps there is nothing else.
void PaintKeyGroups(QPainter& painter, const std::vector<KeyCap>& caps,
                    const std::vector<QRectF>& rects, const KeyPlacing& placing) {
    const double nearby = kJoinedGap * placing.KeyHeight();
    const double radius = kRadius * placing.KeyHeight();
    const double around = LineWidth(kGroupLine * placing.KeyHeight(), placing);
    std::map<int, QPainterPath> plates;
    std::map<int, QColor> colors;
    for (std::size_t a = 0; a < caps.size(); ++a) {
        if (caps[a].group == 0)
            continue;
        QPainterPath& plate = plates[caps[a].group];
        plate.setFillRule(Qt::WindingFill); // all of its parts
        plate.addRoundedRect(Shrunk(rects[a], -around), radius, radius);
        colors[caps[a].group] = FootColor(caps[a]);
        for (std::size_t b = a + 1; b < caps.size(); ++b)
            if (caps[b].group == caps[a].group)
                if (const QRectF bridge = BridgeBetween(rects[a], rects[b], nearby, radius);
                    !bridge.isEmpty())
                    plate.addRect(Shrunk(bridge, -around));
    }
    for (const auto& [group, plate] : plates)
        painter.fillPath(plate, colors[group]);
}

void PaintKeyCaps(QPainter& painter, const QRectF& area, const std::vector<KeyCap>& caps,
                  const KeyTextSize& textSize, int focused) {
    if (!caps.empty())
        PaintKeyCaps(painter, KeyPlacing(caps, area, painter.device()->devicePixelRatioF()), caps,
                     textSize, focused);
}

void PaintKeyCaps(QPainter& painter, const KeyPlacing& placing, const std::vector<KeyCap>& caps,
                  const KeyTextSize& textSize, int focused) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    std::vector<QRectF> rects;
    for (const KeyCap& cap : caps)
        rects.push_back(placing.Map(cap.place));
    PaintKeyGroups(painter, caps, rects, placing);
    const KeyTextSize common = CommonTextSize(caps, placing, textSize);
    for (std::size_t i = 0; i < caps.size(); ++i) {
        PaintKeyBody(painter, rects[i], caps[i], placing);
        for (const KeyText& text : KeyTexts(rects[i], caps[i], placing, common))
            PaintKeyText(painter, text);
    }
    for (std::size_t i = 0; i < caps.size(); ++i) {
        if (caps[i].isCurrent)
            PaintKeyCurrent(painter, rects[i], placing);
        if (caps[i].index == focused)
            PaintKeyFocus(painter, rects[i], placing);
    }
    painter.restore();
}

} // namespace qx::views
