// ChangeMark: shows which editors of a page have been changed by undo or redo: a frame around each
// for a moment, and the focus on the first. Changed keys become selected.
#pragma once

#include "views/KeyGrid.h"

#include <QPointer>
#include <QVariant>
#include <QWidget>

#include <utility>
#include <vector>

namespace qx::app {

class ChangeMark {
public:
    // Takes the values as they are shown now.
    explicit ChangeMark(const QWidget& page);

    // Marks the editors that now show others.
    void MarkChanged() const;

private:
    std::vector<std::pair<QPointer<QWidget>, QVariant>> m_before;
    std::vector<std::pair<QPointer<views::KeyGrid>, std::vector<views::KeyCap>>> m_keysBefore;
};

} // namespace qx::app
