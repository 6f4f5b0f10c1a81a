#include "views/KeyPainting.h"

#include <algorithm>
#include <cmath>

namespace qx::views {

namespace {

constexpr double kBoardMargin = 0.1; // in parts of a plain key's height

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

} // namespace

KeyPlacing::KeyPlacing(const std::vector<KeyCap>& caps, const QRectF& area, double pixelRatio)
    : m_pixelRatio(pixelRatio) {
    const QRectF bounds = Bounds(caps);
    m_scale =
        std::max(0.0, std::min(area.width() / bounds.width(), area.height() / bounds.height()));
    m_keyHeight = PlainKeyHeight(caps) * m_scale;
    m_origin = area.topLeft() - bounds.topLeft() * m_scale;
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

} // namespace qx::views
