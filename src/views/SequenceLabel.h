// SequenceLabel: shows a key sequence, and can be clicked or typed at to have it edited.
#pragma once

#include <QLabel>

namespace qx::views {

class SequenceLabel : public QLabel {
    Q_OBJECT
public:
    explicit SequenceLabel(QWidget* parent = nullptr);

signals:
    // A click, or a key that writes something; shortcuts and the keys that move the focus go on to
    // where they belong.
    void KeyPressed();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace qx::views
