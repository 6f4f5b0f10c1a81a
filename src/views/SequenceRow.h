// SequenceRow: a header or a terminator on the screen: the switch, the keys, and the buttons that
// change and remove them.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace qx::views {

// A sequence as text that can have the keyboard focus and tells which keys are pressed on it. Keys
// that move the focus, and those that are part of a shortcut, keep their meaning.
class SequenceLabel : public QLabel {
    Q_OBJECT
public:
    explicit SequenceLabel(QWidget* parent = nullptr);

signals:
    void KeyDown(qx::Integer KeyCode); // any key; a Windows virtual key code
    void KeyPress();                   // a key that types something, after KeyDown

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

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
