// BesideOrBelow: two widgets with a movable border: the second beside the first where that keeps
// its preferred width, otherwise below it.
#pragma once

#include <QSplitter>

namespace qx::views {

class BesideOrBelow : public QSplitter {
    Q_OBJECT
public:
    // Takes ownership of both. The second has its whole width beside the first.
    BesideOrBelow(QWidget* first, QWidget* second);

    [[nodiscard]] QSize minimumSizeHint() const override;

signals:
    void BelowChanged(bool isBelow);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Share();

    bool m_isMoved = false; // the border, by the user
};

} // namespace qx::views
