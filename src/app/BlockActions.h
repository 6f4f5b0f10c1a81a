// BlockActions: POS keys joined to blocks and split off on their page. No key of another block is
// ever taken.
#pragma once

#include <QObject>

#include "qxcontrols/common/Types.h"

#include <functional>
#include <vector>

class QAction;
class QMenu;

namespace qx {
class POSKeyboard;
class QXPos;
} // namespace qx
namespace qx::views {
class KeyGrid;
}

namespace qx::app {

class KeyActions;
class KeyEdits;

class BlockActions : public QObject {
    Q_OBJECT
public:
    // It belongs to the actions, and adds its own to them. The others outlive it.
    BlockActions(KeyActions& actions, KeyEdits& edits, views::KeyGrid& grid, QXPos& control);

private:
    [[nodiscard]] std::vector<Integer> Selected() const;
    [[nodiscard]] QMenu* MakeColours();
    void ShowState();
    void Join();
    void Split();
    void SelectBlocks();
    void Edit(const std::function<void(POSKeyboard&)>& change);

    KeyEdits& m_edits;
    views::KeyGrid& m_grid;
    QXPos& m_control;
    QAction *m_join, *m_split, *m_whole, *m_colour;
};

} // namespace qx::app
