// The user's part of the key grid: the pointer, the keyboard, and what they select.
#include "views/KeyGrid.h"
#include "views/KeyGridAccessible.h"
#include "views/ScrollArea.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace qx::views {

namespace {

bool IsArrow(int key) {
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down;
}

} // namespace

// Picks and moves.

void KeyGrid::Pick(int index, bool withControl) {
    const int row = Row(index);
    if (row < 0 || !isEnabled())
        return;
    MoveFocus(index);
    if (!m_caps[static_cast<std::size_t>(row)].isEnabled) { // why not
        ShowToolTip(KeyRect(index).center(), mapToGlobal(KeyRect(index).center()));
        return;
    }
    if (!m_selects) {
        emit KeyPicked(index, withControl);
        return;
    }
    KeySelection selection = m_selection;
    if (withControl)
        selection.Toggle(index);
    else
        selection.Only(index);
    const int anchor = selection.Anchor();
    TakeSelection(std::move(selection));
    emit KeyPicked(anchor, false);
}

void KeyGrid::Reach(int index) {
    MoveFocus(index);
    if (m_focusKey < 0)
        return;
    ScrollArea::Reveal(*this, KeyRect(m_focusKey));
    if (m_selects) {
        KeySelection selection;
        selection.Only(m_focusKey);
        TakeSelection(std::move(selection));
    }
    emit KeyReached(m_focusKey);
}

void KeyGrid::ReachRow(int row) {
    if (row >= 0 && row < static_cast<int>(m_caps.size()))
        Reach(m_caps[static_cast<std::size_t>(row)].index);
}

void KeyGrid::MoveToward(Qt::Key arrow, Move move) {
    const int row = RowToward(arrow);
    if (row < 0)
        return;
    const QPointF goal = m_goal;
    const bool hadFocus = m_focusKey >= 0;
    const KeyCap& cap = m_caps[static_cast<std::size_t>(row)];
    const QRectF place = cap.place;
    if (move == Move::Reach)
        Reach(cap.index);
    else if (move == Move::Extend)
        ExtendTo(cap.index);
    else
        MoveFocus(cap.index);
    if (!hadFocus)
        return;
    if (arrow == Qt::Key_Left || arrow == Qt::Key_Right) // keep to the row or the column
        m_goal.setY(std::clamp(goal.y(), place.top(), place.bottom()));
    else
        m_goal.setX(std::clamp(goal.x(), place.left(), place.right()));
}

// Several keys.

void KeyGrid::SetSelects(bool selects) {
    m_selects = selects;
    m_selection = {};
    const auto current =
        std::find_if(m_caps.begin(), m_caps.end(), [](const KeyCap& cap) { return cap.isCurrent; });
    if (selects && current != m_caps.end())
        m_selection.Only(current->index);
    update();
}

std::vector<int> KeyGrid::Selected() const {
    std::vector<int> keys;
    for (const KeyCap& cap : m_caps)
        if (m_selection.Has(cap.index))
            keys.push_back(cap.index);
    return keys;
}

void KeyGrid::Select(const std::set<int>& keys) {
    KeySelection selection;
    if (keys.contains(m_selection.Anchor()))
        selection.Only(m_selection.Anchor());
    selection.Range(keys);
    selection.KeepTo(m_caps);
    const int anchor = selection.Anchor();
    const bool isNew = anchor != m_selection.Anchor();
    TakeSelection(std::move(selection));
    if (isNew && anchor >= 0)
        emit KeyPicked(anchor, false);
}

void KeyGrid::ExtendTo(int index) {
    MoveFocus(index);
    ScrollArea::Reveal(*this, KeyRect(index));
    if (m_selection.Anchor() < 0)
        return Pick(index);
    KeySelection selection = m_selection;
    selection.Range(KeysBetween(m_caps, selection.Anchor(), index));
    TakeSelection(std::move(selection));
}

void KeyGrid::ExtendToEdge(bool atEnd, bool ofAll) {
    const KeyCap* edge = nullptr;
    for (const KeyCap& cap : m_caps) {
        if (!cap.joinsRanges ||
            !(ofAll || (cap.place.top() <= m_goal.y() && m_goal.y() <= cap.place.bottom())))
            continue;
        if (edge == nullptr ||
            (ofAll || cap.place.center().x() > edge->place.center().x()) == atEnd)
            edge = &cap;
    }
    if (m_focusKey >= 0 && edge != nullptr)
        ExtendTo(edge->index);
}

void KeyGrid::TakeSelection(KeySelection selection) {
    if (selection == m_selection)
        return;
    UpdateSelected();
    m_selection = std::move(selection);
    UpdateSelected();
    AnnounceFocusKey(this); // its name and state are read out again
    emit SelectionChanged();
}

// The pointer.

void KeyGrid::mousePressEvent(QMouseEvent* event) {
    const int index = KeyAt(event->pos());
    if (event->button() != Qt::LeftButton || (index < 0 && !m_selects))
        return QWidget::mousePressEvent(event);
    m_drag = {Drag::Kind::Press, event->pos(), event->pos(), index, m_selection};
    UpdateKey(index);
}

void KeyGrid::mouseMoveEvent(QMouseEvent* event) {
    Hover(KeyAt(event->pos()));
    if (m_selects && m_drag.kind != Drag::Kind::None)
        GoOnDragging(event->pos(), event->modifiers());
}

void KeyGrid::GoOnDragging(const QPoint& at, Qt::KeyboardModifiers modifiers) {
    m_drag.at = at;
    if (m_drag.kind == Drag::Kind::Press) {
        if ((at - m_drag.from).manhattanLength() < QApplication::startDragDistance())
            return;
        const bool isCarried = m_carries && m_drag.key >= 0 && m_carries(m_drag.key);
        m_drag.kind = isCarried ? Drag::Kind::Carry : Drag::Kind::Band;
        if (!modifiers.testFlag(Qt::ControlModifier) && !isCarried)
            m_selection = {};
    }
    if (m_drag.kind == Drag::Kind::Carry) {
        setCursor(modifiers.testFlag(Qt::ShiftModifier) ? Qt::DragMoveCursor : Qt::DragCopyCursor);
    } else {
        const KeyPlacing placing(m_caps, rect(), devicePixelRatioF());
        std::set<int> keys;
        if (modifiers.testFlag(Qt::ControlModifier))
            keys = m_drag.before.Keys();
        for (const KeyCap& cap : m_caps)
            if (cap.joinsRanges && placing.Map(cap.place).intersects(Band()))
                keys.insert(cap.index);
        KeySelection selection;
        if (keys.contains(m_drag.before.Anchor()))
            selection.Only(m_drag.before.Anchor());
        selection.Range(std::move(keys));
        m_selection = std::move(selection);
    }
    update();
}

void KeyGrid::EndDrag() {
    m_drag = {};
    unsetCursor();
    update();
}

void KeyGrid::mouseReleaseEvent(QMouseEvent* event) {
    const Drag drag = m_drag;
    if (event->button() != Qt::LeftButton || drag.kind == Drag::Kind::None)
        return QWidget::mouseReleaseEvent(event);
    EndDrag();
    const int at = KeyAt(event->pos());
    switch (drag.kind) {
    case Drag::Kind::Press:
        if (at != drag.key || at < 0)
            return;
        if (m_selects && event->modifiers().testFlag(Qt::ShiftModifier))
            return ExtendTo(at);
        return Pick(at, event->modifiers().testFlag(Qt::ControlModifier));
    case Drag::Kind::Carry:
        if (at >= 0 && at != drag.key)
            emit KeyDropped(drag.key, at, event->modifiers().testFlag(Qt::ShiftModifier));
        return;
    default: {
        const std::set<int> keys = std::exchange(m_selection, drag.before).Keys();
        if (!keys.empty())
            Select(keys);
        MoveFocus(m_selection.Anchor());
    }
    }
}

void KeyGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!m_selects)
        return mousePressEvent(event);
    const int index = KeyAt(event->pos());
    if (event->button() != Qt::LeftButton || index < 0)
        return;
    Pick(index);
    emit KeyActivated(index);
}

void KeyGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (!m_selects)
        return QWidget::contextMenuEvent(event);
    const bool isPointer = event->reason() == QContextMenuEvent::Mouse;
    const int index = isPointer ? KeyAt(event->pos()) : m_focusKey;
    if (index < 0)
        return;
    if (!m_selection.Has(index))
        Pick(index);
    emit MenuRequested(isPointer ? event->globalPos() : mapToGlobal(KeyRect(index).center()));
}

void KeyGrid::leaveEvent(QEvent* event) {
    Hover(-1);
    QWidget::leaveEvent(event);
}

// Tool tips, the focus and the keyboard.

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
    QString text = row < 0 ? QString() : DescriptionOf(m_caps[static_cast<std::size_t>(row)]);
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
    AnnounceFocusKey(this);
    UpdateKey(m_focusKey);
    QWidget::focusInEvent(event);
}

void KeyGrid::focusOutEvent(QFocusEvent* event) {
    UpdateKey(m_focusKey);
    QWidget::focusOutEvent(event);
}

void KeyGrid::keyPressEvent(QKeyEvent* event) {
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const int key = event->key();
    const bool withControl = modifiers == Qt::ControlModifier && (m_controlMoves || m_selects);
    const bool withShift = modifiers == Qt::ShiftModifier && m_selects;
    if (IsArrow(key) && (modifiers == Qt::NoModifier || withControl || withShift))
        MoveToward(static_cast<Qt::Key>(key), withControl ? Move::FocusOnly
                                              : withShift ? Move::Extend
                                                          : Move::Reach);
    else if (key == Qt::Key_Space && withControl)
        Pick(m_focusKey, true);
    else if (key == Qt::Key_Space && withShift && m_focusKey >= 0)
        ExtendTo(m_focusKey);
    else if ((key == Qt::Key_Home || key == Qt::Key_End) && m_selects &&
             modifiers.testFlag(Qt::ShiftModifier))
        ExtendToEdge(key == Qt::Key_End, modifiers.testFlag(Qt::ControlModifier));
    else if (modifiers != Qt::NoModifier)
        QWidget::keyPressEvent(event);
    else if (key == Qt::Key_Home)
        ReachRow(0);
    else if (key == Qt::Key_End)
        ReachRow(static_cast<int>(m_caps.size()) - 1);
    else if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)
        Pick(m_focusKey);
    else if (key == Qt::Key_Escape && m_drag.kind != Drag::Kind::None) {
        m_selection = m_drag.before;
        EndDrag();
    } else
        QWidget::keyPressEvent(event);
}

} // namespace qx::views
