// SequenceRow: a header or a terminator on the screen: the check box, the keys, and the buttons
// that change and remove them.
#pragma once

#include <QBoxLayout>
#include <QCheckBox>
#include <QPushButton>

namespace qx::views {

class SequenceLabel;

struct SequenceRow {
    // Adds the widgets to the column: the check box, the keys, the buttons.
    explicit SequenceRow(QBoxLayout& column);

    // Distinguishes the widgets of several rows for screen readers.
    void ShowAccessibleNames() const;

    QCheckBox* use;
    SequenceLabel* keys;
    QPushButton* edit;
    QPushButton* remove;
};

} // namespace qx::views
