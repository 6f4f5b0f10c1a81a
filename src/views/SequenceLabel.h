// SequenceLabel: shows a key sequence as text, can have the keyboard focus and reports the keys
// pressed on it. A click only gives it the focus.
//
// Keys that move the focus, modifier keys alone, and shortcuts keep their usual meaning.
#pragma once

#include "qxcontrols/common/Types.h"

#include <QLabel>

namespace qx::views {

class SequenceLabel : public QLabel {
    Q_OBJECT
public:
    explicit SequenceLabel(QWidget* parent = nullptr);

    // Focuses the visible label of this name on the page, if there is one. It reports the focus
    // even if the window is not active.
    static void Choose(const QWidget& page, const char* name);

    // Sets the accessible name: the caption beside the label, and the keys.
    void ShowAccessibleName(const QString& caption);

    // Marks it as the one that is edited beside the page, whatever has the focus.
    void SetEdited(bool isEdited);

signals:
    void Entered();                    // it has got the focus
    void KeyDown(qx::Integer KeyCode); // any other key, as a Windows virtual key code
    void KeyPress();                   // after KeyDown, if the key types a character

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void PaintField();

    bool m_isEdited = false;
};

} // namespace qx::views
