#include "app/KeySample.h"

#include <QPainter>

#include <utility>

namespace qx::app {

namespace {

constexpr int kKeyWidth = 84; // in the unit of the caps
constexpr int kKeyHeight = 40;
constexpr int kSampleGap = 4;

} // namespace

KeySample::KeySample(int columns, std::function<Look()> look, QWidget* parent)
    : QWidget(parent), m_columns(columns), m_look(std::move(look)) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

KeySample::Look KeySample::Placed() const {
    Look look = m_look();
    for (int i = 0; i < static_cast<int>(look.caps.size()); ++i) {
        const int column = i % m_columns;
        const int row = i / m_columns;
        look.caps[static_cast<std::size_t>(i)].place =
            QRectF(column * (kKeyWidth + kSampleGap), row * (kKeyHeight + kSampleGap), kKeyWidth,
                   kKeyHeight);
    }
    return look;
}

QSize KeySample::sizeHint() const {
    return views::KeyPlacing::NaturalSize(Placed().caps).toSize();
}

void KeySample::paintEvent(QPaintEvent* /*event*/) {
    const Look look = Placed();
    QPainter painter(this);
    views::PaintKeyCaps(painter, rect(), look.caps, {look.pointSize});
}

views::KeyCap SampleKey(const QString& caption, Long lColor, views::KeyState state) {
    views::KeyCap cap;
    cap.caption = caption;
    cap.color = views::ToQColor(lColor);
    cap.state = state;
    return cap;
}

} // namespace qx::app
