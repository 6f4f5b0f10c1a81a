// Undo and redo in fields: while they have none of their own, the window's.
#pragma once

#include <QKeyEvent>

namespace qx::views {

// Leaves undo or redo to the window if the event asks the field about one that it does not have.
inline bool LeaveUndo(QEvent& event, bool hasUndo, bool hasRedo) {
    if (event.type() != QEvent::ShortcutOverride)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    if ((hasUndo || !key.matches(QKeySequence::Undo)) &&
        (hasRedo || !key.matches(QKeySequence::Redo)))
        return false;
    event.ignore();
    return true;
}

} // namespace qx::views
