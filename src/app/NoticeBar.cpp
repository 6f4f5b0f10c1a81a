#include "app/NoticeBar.h"

#include "views/LineIcon.h"

#include <QAccessible>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace qx::app {

namespace {

const char* IconOf(NoticeBar::Kind kind) {
    switch (kind) {
    case NoticeBar::Kind::Information:
        return "information";
    case NoticeBar::Kind::Success:
        return "done";
    case NoticeBar::Kind::Warning:
        return "warning";
    }
    return "";
}

} // namespace

NoticeBar::NoticeBar(const QString& textName, QWidget* parent)
    : QFrame(parent), m_icon(new QLabel), m_text(new QLabel), m_close(new QToolButton) {
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::AlternateBase);
    setAutoFillBackground(true);
    m_text->setObjectName(textName);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_close->setAutoRaise(true);
    m_close->setIcon(views::LineIcon(QStringLiteral("close")));
    NameButton();
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);
    auto* row = new QHBoxLayout(this);
    row->addWidget(m_icon);
    row->addWidget(m_text, 1);
    row->addWidget(m_close);
    hide();
}

void NoticeBar::Tell(Kind kind, const QString& text) {
    const bool isAdded = isVisibleTo(parentWidget()) && !m_isOld;
    const QString before = m_text->text();
    m_kind = isAdded ? std::max(m_kind, kind) : kind;
    m_isOld = false;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(views::LineIcon(QString::fromLatin1(IconOf(m_kind)))
                          .pixmap(QSize(size, size), devicePixelRatioF()));
    if (!isAdded)
        m_text->setText(text);
    else if (!before.contains(text))
        m_text->setText(before + QLatin1Char('\n') + text);
    setVisible(!text.isEmpty());
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void NoticeBar::NameButton() {
    m_close->setToolTip(tr("Close this message"));
    m_close->setAccessibleName(m_close->toolTip());
}

void NoticeBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        NameButton();
    QFrame::changeEvent(event);
}

void NoticeBar::ClearOld() {
    if (m_isOld)
        hide();
}

void NoticeBar::HideButton() {
    m_close->hide();
}

} // namespace qx::app
