// ChipRow: the items of a sequence as chips, with a caret between them.
//
// It shows the sequence and reports the user's edits; its owner applies them and shows the result.
#pragma once

#include "qxcontrols/keys/SequenceItems.h"

#include <QFrame>

#include <vector>

namespace qx::views {

class FlowLayout;

class ChipRow : public QFrame {
    Q_OBJECT
public:
    explicit ChipRow(QWidget* parent = nullptr);

    // The caret is before the item with this index, or after the last one.
    void Show(const std::vector<SequenceItem>& items, std::size_t caret);

signals:
    void CaretMoved(int before);
    void Removed(int item);
    void RemovedBefore(); // what is before the caret
    void Moved(int item, int before);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    class Chip;

    void ShowNames();
    // The index of the item before which something at this point belongs.
    [[nodiscard]] int GapAt(const QPoint& point) const;
    [[nodiscard]] QRect CaretRect(int before) const;

    FlowLayout* m_flow;
    std::vector<Chip*> m_chips;
    int m_caret = 0;
    int m_dropGap = -1; // while something is dragged over the row
};

} // namespace qx::views
