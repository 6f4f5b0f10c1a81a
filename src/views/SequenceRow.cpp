#include "views/SequenceRow.h"

#include "views/VirtualKeys.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace qx::views {

namespace {

// A caption without the marks of its shortcut.
QString Plain(QString caption) {
    const QString ampersand(QChar(u'\uE000')); // stands for "&&" for a moment
    return caption.replace(QLatin1String("&&"), ampersand)
        .remove(u'&')
        .replace(ampersand, QLatin1String("&"));
}

} // namespace

SequenceLabel::SequenceLabel(QWidget* parent) : QLabel(parent) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setBackgroundRole(QPalette::Base);
    setForegroundRole(QPalette::Text);
    setAutoFillBackground(true);
    setFocusPolicy(Qt::StrongFocus);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(4);
}

void SequenceLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isModifier = key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
                            key == Qt::Key_AltGr || key == Qt::Key_Meta;
    // Both together type a sign on keyboards with a third level.
    const bool isShortcut = event->modifiers().testFlag(Qt::ControlModifier) !=
                                event->modifiers().testFlag(Qt::AltModifier) ||
                            event->modifiers().testFlag(Qt::MetaModifier);
    const Integer code = VirtualKeyCode(*event);
    event->ignore(); // a scroll area around moves by it
    if (isModifier || isShortcut || code == 0)
        return;
    const bool isTyping = !event->text().isEmpty();
    event->setAccepted(isTyping);
    emit KeyDown(code);
    if (isTyping)
        emit KeyPress();
}

void SequenceLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    QPainter painter(this);
    if (text().trimmed().isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(contentsRect().adjusted(margin(), 0, -margin(), 0),
                         static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), tr("No keys"));
    }
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2, 2);
    }
}

void SequenceLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void SequenceLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

SequenceRow::SequenceRow(QGridLayout& grid, int row)
    : use(new QCheckBox), keys(new SequenceLabel), edit(new QPushButton), remove(new QPushButton) {
    keys->setMinimumHeight(edit->sizeHint().height());
    grid.addWidget(use, row, 0, 1, 3);
    grid.addWidget(keys, row + 1, 0);
    grid.addWidget(edit, row + 1, 1, Qt::AlignTop);
    grid.addWidget(remove, row + 1, 2, Qt::AlignTop);
    grid.setColumnStretch(0, 1);
    grid.setVerticalSpacing(6);
}

void SequenceRow::ShowAccessibleNames() const {
    const QString which = Plain(use->text());
    keys->update(); // the text of an empty one may be in another language now
    const QString held = keys->text().trimmed();
    keys->setAccessibleName(which + QLatin1String(": ") +
                            (held.isEmpty() ? SequenceLabel::tr("No keys") : held));
    for (QPushButton* button : {edit, remove})
        button->setAccessibleName(which + QLatin1String(": ") + Plain(button->text()));
}

} // namespace qx::views
