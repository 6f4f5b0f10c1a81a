// SequenceRow: a header or a terminator on the screen: the switch, the keys, and the buttons that
// change and remove them.
#pragma once

#include <QCheckBox>
#include <QGridLayout>
#include <QPushButton>

namespace qx::views {

class SequenceLabel;

struct SequenceRow {
    // Puts the widgets into two rows and three columns of the grid, the switch above the rest.
    SequenceRow(QGridLayout& grid, int row);

    // Tells those who hear the screen which of several rows the widgets belong to.
    void ShowAccessibleNames() const;

    QCheckBox* use;
    SequenceLabel* keys;
    QPushButton* edit;
    QPushButton* remove;
};

} // namespace qx::views
