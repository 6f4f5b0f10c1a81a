// SequenceRow: a header or a terminator on the screen: the check box, the keys, and the buttons
// that change and remove them.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>

namespace qx::views {

class SequenceLabel;

struct SequenceRow {
    // Puts the widgets into three rows and columns of the grid: the check box, the keys, the
    // buttons.
    SequenceRow(QGridLayout& grid, int row);

    // Distinguishes the widgets of several rows for screen readers.
    void ShowAccessibleNames() const;

    QCheckBox* use;
    SequenceLabel* keys;
    QPushButton* edit;
    QPushButton* remove;
};

} // namespace qx::views
