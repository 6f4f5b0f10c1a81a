// KeyMarks: puts a dot on the keys of a page, and on what else its section's face marks, that are
// not yet in the keyboard as the document has them, and crosses out those whose sequence the
// keyboard never sends because another module programs the key.
#pragma once

#include "qxcontrols/common/Event.h"

#include <QCoreApplication>

namespace qx::views {
class KeyGrid;
}

namespace qx::app {

class KeyEdits;
class KeyboardState;

class KeyMarks {
    Q_DECLARE_TR_FUNCTIONS(KeyMarks)
public:
    // All outlive this object. The grid is in `view`, the view of the section's face.
    KeyMarks(const KeyboardState& state, KeyEdits& edits, views::KeyGrid& grid, QWidget& view);

private:
    void ShowChanged();
    void ShowUnsent();

    const KeyboardState& m_state;
    KeyEdits& m_edits;
    views::KeyGrid& m_grid;
    QWidget& m_view;
    Subscription m_refreshed;
};

} // namespace qx::app
