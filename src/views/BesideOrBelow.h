// BesideOrBelow: a view with a board of keys, and a panel: below the view where the board cannot
// keep its natural width beside it, or becomes larger and leaves the panel much room; otherwise
// beside it.
//
// How large the board is depends on the size of the window alone, unless that is very low, so that
// no key moves under the pointer when one is selected or a message appears. A panel that has too
// little room scrolls.
#pragma once

#include <QWidget>

namespace qx::views {

class KeyGrid;

class BesideOrBelow : public QWidget {
    Q_OBJECT
public:
    // Takes ownership of both; the board is in the view. The panel has this width beside the view,
    // whatever it shows.
    BesideOrBelow(QWidget* view, KeyGrid& board, QWidget* panel, int panelWidth);

    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void BelowChanged(bool isBelow);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Arrange();

    QWidget* m_view;
    const KeyGrid& m_board;
    QWidget* m_boardPart; // of the view's layout: the board, or what it is in
    QWidget* m_panel;
    int m_panelWidth; // with a scroll bar
    bool m_isBelow = false;
};

} // namespace qx::views
