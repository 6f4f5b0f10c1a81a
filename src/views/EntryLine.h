// EntryLine: a line whose text is taken out when it has been used. While it is empty, undo and redo
// are those of the window.
#pragma once

#include "views/WindowUndo.h"

#include <QLineEdit>

namespace qx::views {

class EntryLine : public QLineEdit {
public:
    // Without a way back to the text that was used.
    void Empty() { setText(QString()); }

protected:
    bool event(QEvent* event) override {
        return (text().isEmpty() && LeaveUndo(*event)) || QLineEdit::event(event);
    }
};

} // namespace qx::views
