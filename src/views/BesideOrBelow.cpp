#include "views/BesideOrBelow.h"

#include "views/KeyGrid.h"
#include "views/ScrollArea.h"

#include <QEvent>
#include <QLayout>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kGap = 8; // pixels
constexpr int kGapBeside = 16;
constexpr int kLeastPanel = 48;

// What the board leaves of the window's height.
constexpr int kLeftAbovePanel = 352;
constexpr int kLeftAboveLargePanel = 480;
constexpr int kLeftBesidePanel = 240;

int HeightFor(int width, const QLayout& layout) {
    return layout.hasHeightForWidth() ? layout.totalHeightForWidth(width)
                                      : layout.totalSizeHint().height();
}

} // namespace

BesideOrBelow::BesideOrBelow(QWidget* view, KeyGrid& board, QWidget* panel, int panelWidth)
    : m_view(view), m_board(board),
      m_boardPart(board.parentWidget() == view ? &board : board.parentWidget()),
      m_panel(new TallArea(panel)),
      m_panelWidth(panelWidth + style()->pixelMetric(QStyle::PM_ScrollBarExtent)) {
    view->setParent(this);
    m_panel->setParent(this);
    m_panel->setMinimumHeight(kLeastPanel);
    m_boardPart->setFixedHeight(board.minimumSizeHint().height()); // until there is a window
}

// As narrow as one of them, or it would never be made so narrow that the panel moves; as low as
// with the smallest board.
QSize BesideOrBelow::minimumSizeHint() const {
    const QSize view = m_view->minimumSizeHint();
    const int viewHeight =
        view.height() - m_boardPart->minimumHeight() + m_board.minimumSizeHint().height();
    return {std::max(view.width(), m_panelWidth),
            m_isBelow ? viewHeight + kGap + kLeastPanel : std::max(viewHeight, kLeastPanel)};
}

bool BesideOrBelow::event(QEvent* event) {
    const bool isDone = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) { // what one of them needs has changed
        Arrange();
        updateGeometry();
    }
    return isDone;
}

void BesideOrBelow::resizeEvent(QResizeEvent* /*event*/) {
    Arrange();
}

void BesideOrBelow::Arrange() {
    const int beside = kGapBeside + m_panelWidth;
    const bool isNarrow = width() < m_board.sizeHint().width() + beside;
    const int heightBeside = m_board.HeightAt(width() - beside, kLeftBesidePanel);
    const int heightBelow =
        m_board.HeightAt(width(), isNarrow ? kLeftAbovePanel : kLeftAboveLargePanel);
    if (const bool isBelow = isNarrow || heightBelow > heightBeside; isBelow != m_isBelow) {
        m_isBelow = isBelow;
        emit BelowChanged(isBelow);
    }
    const int viewWidth = m_isBelow ? width() : width() - beside;
    const int others = HeightFor(viewWidth, *m_view->layout()) - m_boardPart->minimumHeight() +
                       (m_isBelow ? kGap + kLeastPanel : 0);
    m_boardPart->setFixedHeight(
        std::max(m_board.minimumSizeHint().height(),
                 std::min(m_isBelow ? heightBelow : heightBeside,
                          height() - others))); // the latter in very low windows
    m_view->setGeometry(0, 0, viewWidth, HeightFor(viewWidth, *m_view->layout()));
    const int below = m_view->height() + kGap;
    m_panel->setGeometry(m_isBelow ? QRect(0, below, width(), height() - below)
                                   : QRect(viewWidth + kGapBeside, 0, m_panelWidth, height()));
}

} // namespace qx::views
