#include "app/KeySample.h"

#include <QPainter>

#include <utility>

namespace qx::app {

namespace {

constexpr int kKeyWidth = 72; // at natural size
constexpr int kKeyHeight = static_cast<int>(views::kNaturalKeyHeight);
constexpr int kGap = 4;

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
            QRectF(column * (kKeyWidth + kGap), row * (kKeyHeight + kGap), kKeyWidth, kKeyHeight);
    }
    return look;
}

QSize KeySample::sizeHint() const {
    const int count = static_cast<int>(m_look().caps.size());
    const int rows = (count + m_columns - 1) / m_columns;
    return {m_columns * (kKeyWidth + kGap), rows * (kKeyHeight + kGap)};
}

void KeySample::paintEvent(QPaintEvent* /*event*/) {
    const Look look = Placed();
    QPainter painter(this);
    views::PaintKeyCaps(painter, rect(), look.caps, look.pointSize);
}

} // namespace qx::app
