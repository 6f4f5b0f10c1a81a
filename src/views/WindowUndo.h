// Undo and redo in fields that leave them to the window at times.
#pragma once

#include <QKeyEvent>

namespace qx::views {

// Leaves undo or redo to the window if that is what the event asks the field about.
inline bool LeaveUndo(QEvent& event) {
    if (event.type() != QEvent::ShortcutOverride)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    if (!key.matches(QKeySequence::Undo) && !key.matches(QKeySequence::Redo))
        return false;
    event.ignore();
    return true;
}

} // namespace qx::views
