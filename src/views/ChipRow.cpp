#include "views/ChipRow.h"

#include "views/Bindings.h"
#include "views/FlowLayout.h"
#include "views/LineIcon.h"

#include <QApplication>
#include <QDrag>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include <algorithm>

namespace qx::views {

namespace {

constexpr int kGap = 6;
constexpr int kPadding = 4;
constexpr int kCaretWidth = 2;
constexpr const char* kMimeType = "application/x-qx-sequence-item";

} // namespace

// One item. A click puts the caret behind it, a drag moves it.
class ChipRow::Chip : public QFrame {
public:
    Chip(ChipRow& row, int index, const SequenceItem& item)
        : QFrame(&row), m_row(row), m_index(index), m_text(ToQt(item.text)) {
        setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
        setBackgroundRole(QPalette::Button);
        setAutoFillBackground(true);
        setCursor(Qt::OpenHandCursor);
        auto* label = new QLabel(m_text);
        label->setTextFormat(Qt::PlainText);
        m_remove = new QToolButton;
        m_remove->setIcon(LineIcon(QStringLiteral("close")));
        m_remove->setAutoRaise(true);
        m_remove->setIconSize({10, 10});
        m_remove->setFocusPolicy(Qt::NoFocus); // the row has keys for it
        m_remove->setCursor(Qt::ArrowCursor);
        QObject::connect(m_remove, &QToolButton::clicked, &row,
                         [&row, index] { emit row.Removed(index); });
        auto* layout = new QHBoxLayout(this);
        layout->setContentsMargins(8, 1, 1, 1);
        layout->setSpacing(2);
        layout->addWidget(label);
        layout->addWidget(m_remove);
    }

    void ShowNames(int count) {
        setAccessibleName(ChipRow::tr("%1, item %2 of %3").arg(m_text).arg(m_index + 1).arg(count));
        m_remove->setToolTip(ChipRow::tr("Remove %1").arg(m_text));
        m_remove->setAccessibleName(m_remove->toolTip());
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { m_pressedAt = event->pos(); }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (rect().contains(event->pos())) {
            m_row.setFocus(Qt::MouseFocusReason);
            emit m_row.CaretMoved(event->pos().x() < width() / 2 ? m_index : m_index + 1);
        }
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if ((event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        auto* data = new QMimeData;
        data->setData(QString::fromLatin1(kMimeType), QByteArray::number(m_index));
        auto* drag = new QDrag(&m_row);
        drag->setMimeData(data);
        drag->setPixmap(grab());
        drag->setHotSpot(m_pressedAt);
        drag->exec(Qt::MoveAction); // this chip may be gone afterwards
    }

private:
    ChipRow& m_row;
    int m_index;
    QString m_text;
    QToolButton* m_remove;
    QPoint m_pressedAt;
};

ChipRow::ChipRow(QWidget* parent) : QFrame(parent), m_flow(new FlowLayout(kGap, this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    setAcceptDrops(true);
    m_flow->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMinimumHeight(fontMetrics().height() + 4 * kPadding + 8);
}

void ChipRow::Show(const std::vector<SequenceItem>& items, std::size_t caret) {
    for (Chip* chip : std::exchange(m_chips, {})) {
        m_flow->removeWidget(chip);
        chip->hide();
        chip->deleteLater(); // it may be the one that was clicked
    }
    for (const SequenceItem& item : items) {
        auto* chip = new Chip(*this, static_cast<int>(m_chips.size()), item);
        m_chips.push_back(chip);
        m_flow->addWidget(chip);
        chip->show();
    }
    m_caret = static_cast<int>(std::min(caret, items.size()));
    ShowNames();
    updateGeometry();
    update();
}

void ChipRow::ShowNames() {
    QStringList texts;
    for (Chip* chip : m_chips)
        chip->ShowNames(static_cast<int>(m_chips.size()));
    setAccessibleName(tr("Keys of the sequence"));
}

void ChipRow::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        ShowNames();
}

void ChipRow::keyPressEvent(QKeyEvent* event) {
    const int end = static_cast<int>(m_chips.size());
    const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
    switch (event->key()) {
    case Qt::Key_Left:
        if (moves && m_caret > 1)
            emit Moved(m_caret - 1, m_caret - 2);
        else if (!moves && m_caret > 0)
            emit CaretMoved(m_caret - 1);
        return;
    case Qt::Key_Right:
        if (moves && m_caret > 0 && m_caret < end)
            emit Moved(m_caret - 1, m_caret + 1);
        else if (!moves && m_caret < end)
            emit CaretMoved(m_caret + 1);
        return;
    case Qt::Key_Home:
        emit CaretMoved(0);
        return;
    case Qt::Key_End:
        emit CaretMoved(end);
        return;
    case Qt::Key_Backspace:
        emit RemovedBefore();
        return;
    case Qt::Key_Delete:
        if (m_caret < end)
            emit Removed(m_caret);
        return;
    default:
        QFrame::keyPressEvent(event);
    }
}

void ChipRow::mousePressEvent(QMouseEvent* event) {
    setFocus(Qt::MouseFocusReason);
    emit CaretMoved(GapAt(event->pos()));
}

int ChipRow::GapAt(const QPoint& point) const {
    for (std::size_t i = 0; i < m_chips.size(); ++i) {
        const QRect place = m_chips[i]->geometry();
        const bool isBefore = point.y() <= place.bottom() + kGap / 2 &&
                              (point.x() < place.center().x() || point.y() < place.top() - kGap);
        if (isBefore)
            return static_cast<int>(i);
    }
    return static_cast<int>(m_chips.size());
}

QRect ChipRow::CaretRect(int before) const {
    const int line = fontMetrics().height() + kPadding;
    if (m_chips.empty())
        return {kPadding + 2, 2 * kPadding, kCaretWidth, line};
    const bool isEnd = before >= static_cast<int>(m_chips.size());
    const QRect place = m_chips[static_cast<std::size_t>(isEnd ? before - 1 : before)]->geometry();
    const int x = isEnd ? place.right() + kGap / 2 : place.left() - kGap / 2 - kCaretWidth / 2;
    return {x, place.top(), kCaretWidth, place.height()};
}

void ChipRow::paintEvent(QPaintEvent* event) {
    QFrame::paintEvent(event);
    QPainter painter(this);
    if (hasFocus())
        painter.fillRect(CaretRect(m_caret), palette().color(QPalette::Text));
    if (m_dropGap >= 0)
        painter.fillRect(CaretRect(m_dropGap), palette().color(QPalette::Highlight));
}

void ChipRow::focusInEvent(QFocusEvent* event) {
    QFrame::focusInEvent(event);
    update();
}

void ChipRow::focusOutEvent(QFocusEvent* event) {
    QFrame::focusOutEvent(event);
    update();
}

void ChipRow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->source() == this && event->mimeData()->hasFormat(QString::fromLatin1(kMimeType)))
        event->acceptProposedAction();
}

void ChipRow::dragMoveEvent(QDragMoveEvent* event) {
    m_dropGap = GapAt(event->position().toPoint());
    update();
}

void ChipRow::dragLeaveEvent(QDragLeaveEvent* event) {
    QFrame::dragLeaveEvent(event);
    m_dropGap = -1;
    update();
}

void ChipRow::dropEvent(QDropEvent* event) {
    const int item = event->mimeData()->data(QString::fromLatin1(kMimeType)).toInt();
    m_dropGap = -1;
    update();
    event->acceptProposedAction();
    emit Moved(item, GapAt(event->position().toPoint()));
}

} // namespace qx::views
