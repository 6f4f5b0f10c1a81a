#include "views/KeyGrid.h"

#include "views/Bindings.h"
#include "views/KeyGridAccessible.h"
#include "views/ScrollArea.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace qx::views {

namespace {

// A few sizes of keys, times the colours and states: far more than any keyboard needs.
constexpr std::size_t kMostImages = 512;

constexpr double kLeastScale = 0.55; // captions can just be read

bool IsArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

// How far the place is from the value, 0 where it spans it.
double Off(double value, double from, double to) {
    return std::max({0.0, from - value, value - to});
}

bool SamePlace(const KeyCap& a, const KeyCap& b) {
    return a.index == b.index && a.place == b.place;
}

// Whether the same texts are drawn on both caps, which are at the same place.
bool SameTexts(const KeyCap& a, const KeyCap& b) {
    return a.caption == b.caption && a.legend == b.legend && a.color == b.color &&
           a.state == b.state && a.isCurrent == b.isCurrent && a.isBold == b.isBold &&
           a.textScale == b.textScale && a.group == b.group;
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
    if (std::equal(old.begin(), old.end(), m_caps.begin(), m_caps.end(), SamePlace)) {
        for (std::size_t row = 0; row < m_drawn.size(); ++row)
            if (!SameTexts(old[row], m_caps[row]))
                m_drawn[row].isReady = false;
    } else {
        m_drawn.clear();
        if (const int row = Row(m_focusKey); row >= 0)
            m_goal = m_caps[static_cast<std::size_t>(row)].place.center();
        updateGeometry();
    }
    TellKeysChanged(this, old);
    update();
}

void KeyGrid::SetPointSize(int points) {
    m_pointSize = std::max(1, points);
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
    const int row = Row(index);
    if (row >= 0)
        m_goal = m_caps[static_cast<std::size_t>(row)].place.center();
    const int next = row >= 0 ? index : -1;
    if (next == m_focusKey)
        return;
    UpdateKey(m_focusKey);
    m_focusKey = next;
    UpdateKey(m_focusKey);
    TellFocusKey(this);
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

void KeyGrid::Reach(int index) {
    SetFocusKey(index);
    if (m_focusKey < 0)
        return;
    ScrollArea::Reveal(*this, KeyRect(m_focusKey));
    emit KeyReached(m_focusKey);
}

void KeyGrid::ReachRow(int row) {
    if (row >= 0 && row < static_cast<int>(m_caps.size()))
        Reach(m_caps[static_cast<std::size_t>(row)].index);
}

void KeyGrid::Pick(int index, bool withControl) {
    const int row = Row(index);
    if (row < 0 || !isEnabled())
        return;
    SetFocusKey(index);
    if (m_caps[static_cast<std::size_t>(row)].isEnabled)
        emit KeyPicked(index, withControl);
    else // why not
        ShowToolTip(KeyRect(index).center(), mapToGlobal(KeyRect(index).center()));
}

// Sizes and places.

QSize KeyGrid::sizeHint() const {
    return KeyPlacing::NaturalSize(m_caps).toSize();
}

QSize KeyGrid::minimumSizeHint() const {
    return sizeHint() * kLeastScale;
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
    if (!rect.isEmpty()) // with the focus ring around it
        update(rect.adjusted(-8, -8, 8, 8));
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
    }
    for (std::size_t row = 0; row < m_caps.size(); ++row) {
        if (std::exchange(m_drawn[row].isReady, true))
            continue;
        m_drawn[row].rect = m_placing.Map(m_caps[row].place);
        m_drawn[row].texts =
            KeyTexts(m_drawn[row].rect, m_caps[row], m_placing, {static_cast<double>(m_pointSize)});
    }
}

const QPixmap& KeyGrid::BodyImage(const KeyCap& cap, const QSizeF& size) {
    const QSize pixels = (size * m_pixelRatio).toSize();
    const bool isLive = cap.isEnabled && isEnabled();
    const KeyTouch touch = !isLive                     ? KeyTouch::None
                           : cap.index == m_pressedKey ? KeyTouch::Pressed
                           : cap.index == m_hoveredKey ? KeyTouch::Hovered
                                                       : KeyTouch::None;
    const Look look(pixels.width(), pixels.height(), cap.color.rgb(), cap.state, cap.isCurrent,
                    touch == KeyTouch::Pressed, touch == KeyTouch::Hovered);
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
    const double radius = m_placing.KeyHeight() / 8;
    painter.setPen(Qt::NoPen);
    painter.setBrush(BoardColor(palette()));
    painter.drawRoundedRect(m_placing.Board(), radius, radius);
    std::vector<QRectF> rects;
    rects.reserve(m_drawn.size());
    for (const Drawn& key : m_drawn)
        rects.push_back(key.rect);
    PaintKeyGroups(painter, m_caps, rects, m_placing);

    const QRectF dirty = event->rect();
    for (std::size_t row = 0; row < m_caps.size(); ++row) {
        const Drawn& key = m_drawn[row];
        if (!key.rect.intersects(dirty))
            continue;
        painter.drawPixmap(key.rect.topLeft(), BodyImage(m_caps[row], key.rect.size()));
        for (const KeyText& text : key.texts)
            PaintKeyText(painter, text);
    }
    if (const int row = Row(m_focusKey); row >= 0 && hasFocus())
        PaintKeyFocus(painter, m_drawn[static_cast<std::size_t>(row)].rect, m_placing);
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

// The user.

bool KeyGrid::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    if (!ShowToolTip(help->pos(), help->globalPos()))
        event->ignore();
    return true;
}

bool KeyGrid::ShowToolTip(const QPoint& at, const QPoint& globalAt) {
    const int row = Row(KeyAt(at));
    QString text = row < 0 ? QString() : m_caps[static_cast<std::size_t>(row)].toolTip;
    if (text.isEmpty()) {
        QToolTip::hideText();
        return false;
    }
    if (Qt::mightBeRichText(text)) // keys have names such as "<"
        text = Qt::convertFromPlainText(text);
    QToolTip::showText(globalAt, text, this, KeyRect(m_caps[static_cast<std::size_t>(row)].index));
    return true;
}

void KeyGrid::focusInEvent(QFocusEvent* event) {
    if (m_focusKey < 0) {
        const auto current = std::find_if(m_caps.begin(), m_caps.end(),
                                          [](const KeyCap& cap) { return cap.isCurrent; });
        const Qt::FocusReason reason = event->reason();
        if (current != m_caps.end())
            SetFocusKey(current->index);
        else if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason)
            ReachRow(0);
    }
    TellFocusKey(this);
    UpdateKey(m_focusKey);
    QWidget::focusInEvent(event);
}

void KeyGrid::focusOutEvent(QFocusEvent* event) {
    UpdateKey(m_focusKey);
    QWidget::focusOutEvent(event);
}

void KeyGrid::leaveEvent(QEvent* event) {
    Hover(-1);
    QWidget::leaveEvent(event);
}

void KeyGrid::mouseMoveEvent(QMouseEvent* event) {
    Hover(KeyAt(event->pos()));
}

void KeyGrid::mousePressEvent(QMouseEvent* event) {
    const int index = KeyAt(event->pos());
    if (event->button() != Qt::LeftButton || index < 0)
        return QWidget::mousePressEvent(event);
    m_pressedKey = index;
    UpdateKey(index);
}

void KeyGrid::mouseReleaseEvent(QMouseEvent* event) {
    const int pressed = std::exchange(m_pressedKey, -1);
    if (event->button() != Qt::LeftButton || pressed < 0)
        return QWidget::mouseReleaseEvent(event);
    UpdateKey(pressed);
    if (KeyAt(event->pos()) == pressed)
        Pick(pressed, event->modifiers().testFlag(Qt::ControlModifier));
}

void KeyGrid::MoveToward(Qt::Key arrow, bool reaches) {
    const int row = RowToward(arrow);
    if (row < 0)
        return;
    const QPointF goal = m_goal;
    const bool hadFocus = m_focusKey >= 0;
    const KeyCap& cap = m_caps[static_cast<std::size_t>(row)];
    const QRectF place = cap.place;
    if (reaches)
        Reach(cap.index);
    else
        SetFocusKey(cap.index);
    if (!hadFocus)
        return;
    if (arrow == Qt::Key_Left || arrow == Qt::Key_Right) // keep to the row or the column
        m_goal.setY(std::clamp(goal.y(), place.top(), place.bottom()));
    else
        m_goal.setX(std::clamp(goal.x(), place.left(), place.right()));
}

void KeyGrid::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool withControl = modifiers == Qt::ControlModifier && m_controlMoves;
    if (IsArrow(key) && (modifiers == Qt::NoModifier || withControl))
        MoveToward(static_cast<Qt::Key>(key), !withControl);
    else if (key == Qt::Key_Space && withControl)
        Pick(m_focusKey, true);
    else if (modifiers != Qt::NoModifier)
        QWidget::keyPressEvent(event);
    else if (key == Qt::Key_Home)
        ReachRow(0);
    else if (key == Qt::Key_End)
        ReachRow(static_cast<int>(m_caps.size()) - 1);
    else if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        Pick(m_focusKey);
    else
        QWidget::keyPressEvent(event);
}

} // namespace qx::views
