// SequenceLabel: a key sequence as text, which can have the keyboard focus and tells which keys are
// pressed on it. A click gives it the focus, no more.
//
// Keys that move the focus, Shift and its like alone, and keys that are part of a shortcut keep
// their meaning.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QLabel>

namespace qx::views {

class SequenceLabel : public QLabel {
    Q_OBJECT
public:
    explicit SequenceLabel(QWidget* parent = nullptr);

    // For those who hear the screen: the caption beside the label, and the keys.
    void ShowAccessibleName(const QString& caption);

signals:
    void KeyDown(qx::Integer KeyCode); // any other key; a Windows virtual key code
    void KeyPress();                   // a key that types something, after KeyDown

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
};

} // namespace qx::views
