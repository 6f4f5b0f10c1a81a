#include "app/NoticeBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace qx::app {

namespace {

QStyle::StandardPixmap IconOf(NoticeBar::Kind kind) {
    switch (kind) {
    case NoticeBar::Kind::Success:
        return QStyle::SP_DialogApplyButton;
    case NoticeBar::Kind::Warning:
        return QStyle::SP_MessageBoxWarning;
    case NoticeBar::Kind::Information:
        break;
    }
    return QStyle::SP_MessageBoxInformation;
}

} // namespace

NoticeBar::NoticeBar(QWidget* parent) : QFrame(parent), m_icon(new QLabel), m_text(new QLabel) {
    setObjectName(QStringLiteral("noticeBar"));
    setFrameShape(QFrame::StyledPanel);
    setBackgroundRole(QPalette::AlternateBase);
    setAutoFillBackground(true);
    m_text->setWordWrap(true);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* close = new QToolButton;
    close->setAutoRaise(true);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setToolTip(tr("Close this message"));
    close->setAccessibleName(close->toolTip());
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
    auto* row = new QHBoxLayout(this);
    row->addWidget(m_icon);
    row->addWidget(m_text, 1);
    row->addWidget(close);
    hide();
}

void NoticeBar::Tell(Kind kind, const QString& text) {
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(style()->standardIcon(IconOf(kind)).pixmap(size, size));
    m_text->setText(text);
    setVisible(!text.isEmpty());
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

QString NoticeBar::Text() const {
    return isHidden() ? QString() : m_text->text();
}

} // namespace qx::app
