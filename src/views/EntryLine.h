// EntryLine: a line whose text is taken out when it has been used. While it is empty, undo and redo
// are those of the window.
#pragma once

#include <QKeyEvent>
#include <QLineEdit>

namespace qx::views {

class EntryLine : public QLineEdit {
public:
    // Without a way back to the text that was used.
    void Empty() { setText(QString()); }

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::ShortcutOverride && text().isEmpty()) {
            const auto& key = static_cast<const QKeyEvent&>(*event);
            if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
                event->ignore();
                return true;
            }
        }
        return QLineEdit::event(event);
    }
};

} // namespace qx::views
