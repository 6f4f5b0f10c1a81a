#include "views/SequenceLabel.h"

#include "views/VirtualKeys.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>

namespace qx::views {

SequenceLabel::SequenceLabel(QWidget* parent) : QLabel(parent) {
    setForegroundRole(QPalette::Text);
    setFocusPolicy(Qt::StrongFocus);
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setMargin(4);
    setIndent(margin()); // beside the bar
    setMinimumHeight(fontMetrics().height() + 2 * margin());
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void SequenceLabel::Choose(const QWidget& page, const char* name) {
    for (auto* label : page.findChildren<SequenceLabel*>(QString::fromLatin1(name)))
        if (label->isVisibleTo(&page)) {
            label->setFocus(Qt::OtherFocusReason);
            emit label->Entered();
        }
}

void SequenceLabel::ShowAccessibleName(const QString& caption) {
    const QString keys = text().trimmed();
    setAccessibleName(caption + u' ' + (keys.isEmpty() ? tr("No keys") : keys));
    update(); // the placeholder text may be in another language now
}

void SequenceLabel::SetEdited(bool isEdited) {
    m_isEdited = isEdited;
    update();
}

void SequenceLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    const bool isModifier = key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt ||
                            key == Qt::Key_AltGr || key == Qt::Key_Meta;
    // Ctrl and Alt together (AltGr) type a character on keyboards with a third level.
    const bool isShortcut = event->modifiers().testFlag(Qt::ControlModifier) !=
                                event->modifiers().testFlag(Qt::AltModifier) ||
                            event->modifiers().testFlag(Qt::MetaModifier);
    const Integer code = VirtualKeyCode(*event);
    event->ignore(); // lets a surrounding scroll area handle it
    if (isModifier || isShortcut || code == 0)
        return;
    const bool isTyping = !event->text().isEmpty() && key != Qt::Key_Escape;
    event->setAccepted(isTyping);
    emit KeyDown(code);
    if (isTyping)
        emit KeyPress();
}

// Like those that can be edited.
void SequenceLabel::PaintField() {
    QStyleOptionFrame field;
    field.initFrom(this);
    field.state.setFlag(QStyle::State_HasFocus, false);
    field.lineWidth = 1;
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_PanelLineEdit, &field, &painter, this);
}

void SequenceLabel::paintEvent(QPaintEvent* event) {
    PaintField();
    QLabel::paintEvent(event);
    QPainter painter(this);
    if (text().trimmed().isEmpty()) {
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(contentsRect().adjusted(margin() + indent(), 0, -margin(), 0),
                         static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter), tr("No keys"));
    }
    if (m_isEdited)
        painter.fillRect(QRect(0, 0, margin(), height()), palette().color(QPalette::Highlight));
    if (hasFocus()) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 2, 2);
    }
}

void SequenceLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
    emit Entered();
}

void SequenceLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

} // namespace qx::views
