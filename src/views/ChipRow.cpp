#include "views/ChipRow.h"

#include "views/Bindings.h"
#include "views/FlowLayout.h"
#include "views/LineIcon.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QToolButton>

#include <memory>
#include <utility>

namespace qx::views {

namespace {

constexpr int kGap = 8;
constexpr int kPadding = 4;
constexpr int kCaretWidth = 2;

} // namespace

// One item. A click puts the caret beside it, or into its text; a drag moves it.
class ChipRow::Chip : public QFrame {
public:
    Chip(ChipRow& row, int index, const SequenceItem& item)
        : QFrame(&row), m_row(row), m_index(index), m_text(ToQt(item.text)),
          m_isText(item.kind == SequenceItem::Kind::Text), m_label(new QLabel(m_text)) {
        setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
        setBackgroundRole(QPalette::Button);
        setAutoFillBackground(true);
        setCursor(Qt::OpenHandCursor);
        m_label->setTextFormat(Qt::PlainText);
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
        layout->addWidget(m_label);
        layout->addWidget(m_remove);
    }

    void ShowNames(int count) {
        setAccessibleName(ChipRow::tr("%1, item %2 of %3").arg(m_text).arg(m_index + 1).arg(count));
        m_remove->setToolTip(ChipRow::tr("Remove %1").arg(m_text));
        m_remove->setAccessibleName(m_remove->toolTip());
    }

protected:
    void mousePressEvent(QMouseEvent* event) override { m_pressedAt = event->pos(); }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (m_ghost == nullptr &&
            (event->pos() - m_pressedAt).manhattanLength() < QApplication::startDragDistance())
            return;
        if (m_ghost == nullptr) {
            m_ghost = std::make_unique<QLabel>(window());
            m_ghost->setPixmap(grab());
            m_ghost->show();
        }
        m_ghost->move(mapTo(window(), event->pos() - m_pressedAt));
        m_row.ShowDropGap(GapAt(event->pos()));
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (std::exchange(m_ghost, nullptr) != nullptr) {
            m_row.ShowDropGap(-1);
            if (const int gap = GapAt(event->pos()); gap >= 0)
                emit m_row.Moved(m_index, gap); // this chip may be gone afterwards
        } else if (rect().contains(event->pos())) {
            m_row.setFocus(Qt::MouseFocusReason);
            const int characters = m_isText ? CharactersBefore(event->pos().x()) : 0;
            const bool isBehind = !m_isText && event->pos().x() >= width() / 2;
            emit m_row.CaretMoved(isBehind ? m_index + 1 : m_index, characters);
        }
    }
    void paintEvent(QPaintEvent* event) override {
        QFrame::paintEvent(event);
        if (m_row.hasFocus() && m_row.m_caret == m_index && !m_row.m_beforeCaret.isEmpty())
            QPainter(this).fillRect(
                QRect(XBehind(m_row.m_beforeCaret), 2, kCaretWidth, height() - 4),
                palette().color(QPalette::ButtonText));
    }

private:
    // Where the caret is behind this part of the text.
    [[nodiscard]] int XBehind(const QString& part) const {
        return m_label->x() + m_label->fontMetrics().horizontalAdvance(part) - kCaretWidth / 2;
    }
    [[nodiscard]] int CharactersBefore(int x) const {
        QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, m_text);
        int characters = 0;
        for (qsizetype from = 0, to = finder.toNextBoundary(); to > 0;
             from = to, to = finder.toNextBoundary()) {
            if (x < (XBehind(m_text.left(from)) + XBehind(m_text.left(to))) / 2)
                break;
            ++characters;
        }
        return characters;
    }
    // -1 outside the row.
    [[nodiscard]] int GapAt(const QPoint& point) const {
        const QPoint place = mapToParent(point);
        return m_row.rect().contains(place) ? m_row.GapAt(place) : -1;
    }

    ChipRow& m_row;
    int m_index;
    QString m_text;
    bool m_isText;
    QLabel* m_label;
    QToolButton* m_remove;
    QPoint m_pressedAt;
    std::unique_ptr<QLabel> m_ghost; // follows the pointer while the chip is dragged
};

ChipRow::ChipRow(QWidget* parent) : QFrame(parent), m_flow(new FlowLayout(kGap, this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    m_flow->setContentsMargins(kPadding, kPadding, kPadding, kPadding);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setMinimumHeight(fontMetrics().height() + 4 * kPadding + 8);
}

void ChipRow::Show(const std::vector<SequenceItem>& items, const SequenceDraft::Place& caret) {
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
    m_caret = static_cast<int>(caret.item);
    m_beforeCaret = ToQt(caret.before);
    m_dropGap = -1;
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

void ChipRow::ShowDropGap(int gap) {
    m_dropGap = gap;
    update();
}

void ChipRow::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        ShowNames();
}

void ChipRow::keyPressEvent(QKeyEvent* event) {
    const int end = static_cast<int>(m_chips.size());
    const bool moves = event->modifiers().testFlag(Qt::ControlModifier);
    const int before = m_beforeCaret.isEmpty() ? m_caret - 1 : m_caret; // the item that moves
    switch (event->key()) {
    case Qt::Key_Left:
        if (!moves)
            emit CaretStepped(-1);
        else if (before > 0)
            emit Moved(before, before - 1);
        return;
    case Qt::Key_Right:
        if (!moves)
            emit CaretStepped(1);
        else if (before >= 0 && before + 1 < end)
            emit Moved(before, before + 2);
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
        emit RemovedAfter();
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
    if (hasFocus() && m_beforeCaret.isEmpty())
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

} // namespace qx::views
