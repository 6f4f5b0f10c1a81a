// EntryLine: a line of text. While it has nothing to undo or redo, these are the window's.
#pragma once

#include "views/WindowUndo.h"

#include <QLineEdit>

namespace qx::views {

class EntryLine : public QLineEdit {
public:
    // Takes a text out that was used, without a way back to it.
    void Empty() { setText(QString()); }

protected:
    bool event(QEvent* event) override {
        return LeaveUndo(*event, isUndoAvailable(), isRedoAvailable()) || QLineEdit::event(event);
    }
};

} // namespace qx::views
