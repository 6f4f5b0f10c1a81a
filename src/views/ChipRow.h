// ChipRow: the items of a sequence as chips, with a caret between them or in a text.
//
// It shows the sequence and reports the user's edits; its owner applies them and shows the result.
#pragma once

#include "qxcontrols/keys/SequenceDraft.h"

#include <QFrame>

#include <vector>

namespace qx::views {

class FlowLayout;

class ChipRow : public QFrame {
    Q_OBJECT
public:
    explicit ChipRow(QWidget* parent = nullptr);

    void Show(const std::vector<SequenceItem>& items, const SequenceDraft::Place& caret);

signals:
    void CaretMoved(int before, int characters = 0); // as SequenceDraft::SetCaret takes it
    void CaretStepped(int by);
    void Removed(int item);
    void RemovedBefore(); // what is before the caret
    void RemovedAfter();
    void Moved(int item, int before);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    class Chip;

    void ShowNames();
    void ShowDropGap(int gap);
    // The index of the item before which something at this point belongs.
    [[nodiscard]] int GapAt(const QPoint& point) const;
    [[nodiscard]] QRect CaretRect(int before) const;

    FlowLayout* m_flow;
    std::vector<Chip*> m_chips;
    int m_caret = 0;       // the item after it, or around it
    QString m_beforeCaret; // of the item around it
    int m_dropGap = -1;    // while a chip is dragged over the row
};

} // namespace qx::views
