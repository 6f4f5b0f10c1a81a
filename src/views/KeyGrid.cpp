#include "views/KeyGrid.h"

#include "views/Bindings.h"
#include "views/KeyGridAccessible.h"

#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace qx::views {

namespace {

// A few sizes of keys, times the colours and states: far more than any keyboard needs.
constexpr std::size_t kMostImages = 512;

constexpr double kLeastScale = 0.7; // captions can just be read
constexpr double kDisabledOpacity = 0.6;

// How far the place is from the value, 0 where it spans it.
double Off(double value, double from, double to) {
    return std::max({0.0, from - value, value - to});
}

bool SamePlace(const KeyCap& a, const KeyCap& b) {
    return a.index == b.index && a.place == b.place;
}

// Whether both caps, which are at the same place, look the same.
bool SameLook(const KeyCap& a, const KeyCap& b) {
    return a.caption == b.caption && a.legend == b.legend && a.color == b.color &&
           a.state == b.state && a.isCurrent == b.isCurrent && a.isBold == b.isBold &&
           a.textScale == b.textScale && a.group == b.group;
}

// What the common size of the texts depends on.
bool SameText(const KeyCap& a, const KeyCap& b) {
    return a.caption == b.caption && a.legend == b.legend && a.isBold == b.isBold &&
           a.textScale == b.textScale && a.group == b.group &&
           (a.state == KeyState::Programmed) == (b.state == KeyState::Programmed);
}

// A little darker than the window, or lighter where that is dark.
QColor BoardColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    return window.lightness() > 127 ? window.darker(107) : window.lighter(125);
}

} // namespace

KeyGrid::KeyGrid(QWidget* parent) : QWidget(parent) {
    InstallKeyGridAccessible();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setSizePolicy(policy);
}

void KeyGrid::SetKeys(std::vector<KeyCap> caps) {
    std::erase_if(caps, [](const KeyCap& cap) { return cap.place.isEmpty(); });
    const std::vector<KeyCap> old = std::exchange(m_caps, std::move(caps));
    if (Row(m_focusKey) < 0)
        m_focusKey = -1;
    m_selection.KeepTo(m_caps);
    if (std::equal(old.begin(), old.end(), m_caps.begin(), m_caps.end(), SamePlace)) {
        for (std::size_t row = 0; row < m_drawn.size(); ++row) {
            if (SameLook(old[row], m_caps[row]))
                continue;
            m_drawn[row].isReady = false;
            m_isTextSizeKnown = m_isTextSizeKnown && SameText(old[row], m_caps[row]);
            if (old[row].group == 0 && m_caps[row].group == 0)
                UpdateKey(m_caps[row].index);
            else // the line around a group goes beyond its keys
                update();
        }
    } else {
        update();
        m_drawn.clear();
        if (const int row = Row(m_focusKey); row >= 0)
            m_goal = m_caps[static_cast<std::size_t>(row)].place.center();
        updateGeometry();
    }
    AnnounceKeysChanged(this, old);
}

void KeyGrid::SetMarked(std::set<int> keys, const QString& meaning) {
    Set(m_marked, {std::move(keys), meaning});
}

void KeyGrid::SetStruck(std::set<int> keys, const QString& meaning) {
    Set(m_struck, {std::move(keys), meaning});
}

void KeyGrid::Set(Marks& marks, Marks wanted) {
    std::set<int> changed;
    std::ranges::set_symmetric_difference(wanted.keys, marks.keys,
                                          std::inserter(changed, changed.end()));
    marks = std::move(wanted);
    for (const int key : changed)
        UpdateKey(key);
    AnnounceMarksChanged(this, changed);
}

QString KeyGrid::DescriptionOf(const KeyCap& cap) const {
    QStringList parts{cap.toolTip};
    for (const Marks* marks : {&m_struck, &m_marked})
        if (marks->keys.contains(cap.index))
            parts += marks->meaning;
    parts.removeAll(QString());
    return parts.join(u'\n');
}

void KeyGrid::SetPointSize(int points) {
    const int wanted = std::max(1, points);
    if (std::exchange(m_pointSize, wanted) == wanted)
        return;
    m_drawn.clear();
    update();
}

QString KeyGrid::KeyName(int index) const {
    return ChildName(m_keyName.constData(), index);
}

int KeyGrid::Row(int index) const {
    const auto found = std::find_if(m_caps.begin(), m_caps.end(),
                                    [index](const KeyCap& cap) { return cap.index == index; });
    return found == m_caps.end() ? -1 : static_cast<int>(found - m_caps.begin());
}

// The focus.

void KeyGrid::SetFocusKey(int index) {
    MoveFocus(index);
    if (!m_selects || m_selection.Has(m_focusKey))
        return;
    UpdateSelected();
    m_selection.Only(m_focusKey);
    UpdateSelected();
    emit SelectionChanged();
}

void KeyGrid::MoveFocus(int index) {
    const int row = Row(index);
    if (row >= 0)
        m_goal = m_caps[static_cast<std::size_t>(row)].place.center();
    const int next = row >= 0 ? index : -1;
    if (next == m_focusKey)
        return;
    UpdateKey(m_focusKey);
    m_focusKey = next;
    UpdateKey(m_focusKey);
    AnnounceFocusKey(this);
    emit FocusKeyChanged(m_focusKey);
}

int KeyGrid::RowToward(Qt::Key arrow) const {
    const int focused = Row(m_focusKey);
    if (focused < 0)
        return m_caps.empty() ? -1 : 0;
    const QRectF from = m_caps[static_cast<std::size_t>(focused)].place;
    const bool isBack = arrow == Qt::Key_Left || arrow == Qt::Key_Up;
    const bool isAcross = arrow == Qt::Key_Left || arrow == Qt::Key_Right;
    int best = -1;
    double least = std::numeric_limits<double>::max();
    for (std::size_t row = 0; row < m_caps.size(); ++row) {
        const QRectF& to = m_caps[row].place;
        const QPointF step = (to.center() - from.center()) * (isBack ? -1 : 1);
        // Keys side by side are not above each other, whatever their heights.
        const double gap = isAcross
                               ? (isBack ? from.left() - to.right() : to.left() - from.right())
                               : (isBack ? from.top() - to.bottom() : to.top() - from.bottom());
        const double reach =
            isAcross ? std::min(from.width(), to.width()) : std::min(from.height(), to.height());
        if ((isAcross ? step.x() : step.y()) <= 0 || gap < -reach / 2)
            continue;
        const double off = isAcross ? Off(m_goal.y(), to.top(), to.bottom())
                                    : Off(m_goal.x(), to.left(), to.right());
        const double cost = std::max(0.0, gap) + 3 * off;
        if (cost < least) {
            least = cost;
            best = static_cast<int>(row);
        }
    }
    return best;
}

// Sizes and places.

int KeyGrid::HeightAt(int width, int left) const {
    const QSizeF natural = sizeHint();
    const double wanted = width * natural.height() / std::max(1.0, natural.width());
    return std::max(minimumSizeHint().height(),
                    std::min(static_cast<int>(std::ceil(wanted)), window()->height() - left));
}

QSize KeyGrid::sizeHint() const {
    return KeyPlacing::NaturalSize(m_caps).toSize();
}

QSize KeyGrid::minimumSizeHint() const {
    return (KeyPlacing::NaturalSize(m_caps) * kLeastScale).toSize();
}

QRect KeyGrid::KeyRect(int index) const {
    const int row = Row(index);
    if (row < 0)
        return {};
    const KeyPlacing placing(m_caps, rect(), devicePixelRatioF());
    return placing.Map(m_caps[static_cast<std::size_t>(row)].place).toAlignedRect();
}

int KeyGrid::KeyAt(const QPoint& point) const {
    const KeyPlacing placing(m_caps, rect(), devicePixelRatioF());
    for (const KeyCap& cap : m_caps)
        if (placing.Map(cap.place).contains(point))
            return cap.index;
    return -1;
}

void KeyGrid::UpdateKey(int index) {
    const QRect rect = KeyRect(index);
    const int around = rect.height() / 8 + 2; // the focus ring, or a tick
    if (!rect.isEmpty())
        update(rect.adjusted(-around, -around, around, around));
}

void KeyGrid::UpdateSelected() {
    for (const int key : m_selection.Keys())
        UpdateKey(key);
}

void KeyGrid::Hover(int index) {
    if (index == m_hoveredKey)
        return;
    UpdateKey(m_hoveredKey);
    m_hoveredKey = index;
    UpdateKey(m_hoveredKey);
}

// Drawing.

void KeyGrid::Forget() {
    m_drawn.clear();
    m_images.clear();
}

void KeyGrid::Prepare() {
    if (m_pixelRatio != devicePixelRatioF() || m_images.size() > kMostImages)
        Forget();
    if (m_drawn.size() != m_caps.size()) {
        m_pixelRatio = devicePixelRatioF();
        m_placing = KeyPlacing(m_caps, rect(), m_pixelRatio);
        m_drawn.assign(m_caps.size(), {});
        m_isTextSizeKnown = false;
    }
    if (!std::exchange(m_isTextSizeKnown, true)) {
        const KeyTextSize common =
            CommonTextSize(m_caps, m_placing, {static_cast<double>(m_pointSize)});
        if (std::exchange(m_textSize, common) != common)
            m_drawn.assign(m_caps.size(), {});
    }
    for (std::size_t row = 0; row < m_caps.size(); ++row) {
        if (std::exchange(m_drawn[row].isReady, true))
            continue;
        m_drawn[row].rect = m_placing.Map(m_caps[row].place);
        m_drawn[row].texts = KeyTexts(m_drawn[row].rect, m_caps[row], m_placing, m_textSize);
    }
}

const QPixmap& KeyGrid::BodyImage(const KeyCap& cap, const QSizeF& size) {
    const QSize pixels = (size * m_pixelRatio).toSize();
    const bool isLive = cap.isEnabled && isEnabled();
    const int pressed = m_drag.kind == Drag::Kind::Press ? m_drag.key : -1;
    const KeyTouch touch = !isLive                     ? KeyTouch::None
                           : cap.index == pressed      ? KeyTouch::Pressed
                           : cap.index == m_hoveredKey ? KeyTouch::Hovered
                                                       : KeyTouch::None;
    const Look look(pixels.width(), pixels.height(), cap.color.rgb(), cap.state, touch);
    QPixmap& image = m_images[look];
    if (image.isNull() && !pixels.isEmpty()) {
        image = QPixmap(pixels);
        image.setDevicePixelRatio(m_pixelRatio);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        PaintKeyBody(painter, QRectF({}, size), cap, m_placing, touch);
    }
    return image;
}

void KeyGrid::paintEvent(QPaintEvent* event) {
    if (m_caps.empty())
        return;
    Prepare();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled())
        painter.setOpacity(kDisabledOpacity);
    const double radius = m_placing.KeyHeight() / 8;
    painter.setPen(Qt::NoPen);
    painter.setBrush(BoardColor(palette()));
    painter.drawRoundedRect(m_placing.Board(), radius, radius);
    std::vector<QRectF> rects;
    rects.reserve(m_drawn.size());
    for (const Drawn& key : m_drawn)
        rects.push_back(key.rect);
    PaintKeyGroups(painter, m_caps, rects, m_placing);

    const QRegion& dirty = event->region();
    for (std::size_t row = 0; row < m_caps.size(); ++row) {
        const Drawn& key = m_drawn[row];
        if (!dirty.intersects(key.rect.toAlignedRect()))
            continue;
        painter.drawPixmap(key.rect.topLeft(), BodyImage(m_caps[row], key.rect.size()));
        for (const KeyText& text : key.texts)
            PaintKeyText(painter, text);
        if (IsStruck(m_caps[row].index))
            PaintKeyStruck(painter, key.rect, m_caps[row], m_placing);
    }
    PaintMarks(painter);
    PaintDrag(painter);
}

// One selected key that is marked as the current one needs no second mark.
bool KeyGrid::ShowsSelected(const KeyCap& cap) const {
    return m_selection.Has(cap.index) && (m_selection.Keys().size() > 1 || !cap.isCurrent);
}

void KeyGrid::PaintMarks(QPainter& painter) const {
    const int dropKey = m_drag.kind == Drag::Kind::Carry ? KeyAt(m_drag.at) : -1;
    const auto forEach = [this](const auto& paint) {
        for (std::size_t row = 0; row < m_caps.size(); ++row)
            paint(m_caps[row], m_drawn[row].rect);
    };
    const auto isChosen = [&](const KeyCap& cap) {
        return ShowsSelected(cap) || (cap.index == dropKey && dropKey != m_drag.key);
    };
    forEach([&](const KeyCap& cap, const QRectF& rect) {
        if (isChosen(cap) && !cap.isCurrent) // which has a ring; a tint would dull its colour
            PaintKeySelected(painter, rect, m_placing);
    });
    const auto paintFocus = [&](bool ofCurrent) { // beside the current key, below its ring
        const int row = hasFocus() ? Row(m_focusKey) : -1;
        if (row >= 0 && m_caps[static_cast<std::size_t>(row)].isCurrent == ofCurrent)
            PaintKeyFocus(painter, m_drawn[static_cast<std::size_t>(row)].rect, m_placing);
    };
    paintFocus(false);
    forEach([&](const KeyCap& cap, const QRectF& rect) {
        if (cap.isCurrent)
            PaintKeyCurrent(painter, rect, m_placing);
    });
    paintFocus(true);
    forEach([&](const KeyCap& cap, const QRectF& rect) {
        if (isChosen(cap))
            PaintKeyTick(painter, rect, m_placing);
        if (IsMarked(cap.index))
            PaintKeyDot(painter, rect, cap, m_placing);
    });
}

void KeyGrid::PaintDrag(QPainter& painter) {
    if (m_drag.kind == Drag::Kind::Band) {
        QColor color = palette().color(QPalette::Highlight);
        painter.setPen(QPen(color, 1));
        color.setAlphaF(0.2F);
        painter.setBrush(color);
        painter.drawRect(Band());
    } else if (const int row = Row(m_drag.key); m_drag.kind == Drag::Kind::Carry && row >= 0) {
        const Drawn& key = m_drawn[static_cast<std::size_t>(row)];
        painter.setOpacity(0.75);
        painter.translate(m_drag.at - m_drag.from);
        painter.drawPixmap(key.rect.topLeft(),
                           BodyImage(m_caps[static_cast<std::size_t>(row)], key.rect.size()));
        for (const KeyText& text : key.texts)
            PaintKeyText(painter, text);
    }
}

void KeyGrid::resizeEvent(QResizeEvent* /*event*/) {
    Forget();
}

void KeyGrid::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange) {
        m_drawn.clear();
        update();
    }
    QWidget::changeEvent(event);
}

} // namespace qx::views
