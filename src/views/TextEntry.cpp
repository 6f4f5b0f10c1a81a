#include "views/TextEntry.h"

#include "views/EntryLine.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

namespace qx::views {

TextEntry::TextEntry(QWidget* parent)
    : QWidget(parent), m_column(new QVBoxLayout(this)), m_line(new EntryLine),
      m_add(new QPushButton), m_addEnter(new QPushButton) {
    m_line->setObjectName(QStringLiteral("typedText"));
    m_add->setObjectName(QStringLiteral("addText"));
    m_addEnter->setObjectName(QStringLiteral("addTextAndEnter"));
    setFocusProxy(m_line);
    m_line->installEventFilter(this);
    const auto enter = [this](bool isWithEnter) {
        return [this, isWithEnter] { emit Entered(m_line->text(), isWithEnter); };
    };
    connect(m_line, &QLineEdit::returnPressed, this, enter(false));
    connect(m_add, &QPushButton::clicked, this, enter(false));
    connect(m_addEnter, &QPushButton::clicked, this, enter(true));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_add, m_addEnter}) {
        button->setAutoDefault(false); // Enter in the line of a dialog
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    m_column->setContentsMargins({});
    m_column->addWidget(m_line);
    m_column->addLayout(buttons);
    ShowTexts();
}

void TextEntry::SetWide(bool isWide) {
    m_column->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

QString TextEntry::Text() const {
    return m_line->text();
}

void TextEntry::Insert(const QString& text) {
    m_line->insert(text);
}

void TextEntry::Empty() {
    m_line->Empty();
}

// What is typed is not lost when the user turns to something else, except to a menu or another
// window; Escape drops it. Ctrl+Enter adds it with Enter. Both whatever they are in the window.
bool TextEntry::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        const Qt::FocusReason reason = static_cast<const QFocusEvent&>(*event).reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason &&
            !isAncestorOf(QApplication::focusWidget()) && !Text().isEmpty())
            emit Entered(Text(), false);
    }
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (key.key() == Qt::Key_Escape && !Text().isEmpty()) {
        event->accept();
        if (event->type() == QEvent::KeyPress)
            Empty();
        return true;
    }
    if ((key.key() != Qt::Key_Return && key.key() != Qt::Key_Enter) ||
        !key.modifiers().testFlag(Qt::ControlModifier))
        return QWidget::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        emit Entered(m_line->text(), true);
    return true;
}

void TextEntry::ShowTexts() {
    m_line->setPlaceholderText(tr("Type text"));
    m_line->setAccessibleName(tr("Text to type"));
    m_add->setText(tr("Add"));
    m_add->setToolTip(tr("Add the keys that type the text"));
    m_addEnter->setText(tr("Add + Enter"));
    m_addEnter->setToolTip(
        tr("Add the keys that type the text, and Enter (Ctrl+Enter); without a text, Enter alone"));
}

void TextEntry::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        ShowTexts();
}

} // namespace qx::views
