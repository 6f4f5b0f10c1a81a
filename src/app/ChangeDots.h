// ChangeDots: marks the keys of a page, and what else its section's face marks, that are not yet in
// the keyboard as the document has them.
#pragma once

#include "qxcontrols/common/Event.h"

#include <QCoreApplication>

namespace qx::views {
class KeyGrid;
}

namespace qx::app {

class KeyEdits;
class KeyboardState;

class ChangeDots {
    Q_DECLARE_TR_FUNCTIONS(ChangeDots)
public:
    // All outlive this object. The grid is in `view`, the view of the section's face.
    ChangeDots(const KeyboardState& state, KeyEdits& edits, views::KeyGrid& grid, QWidget& view);

private:
    void Show();

    const KeyboardState& m_state;
    KeyEdits& m_edits;
    views::KeyGrid& m_grid;
    QWidget& m_view;
    Subscription m_refreshed;
};

} // namespace qx::app
