#include "app/NoticeBar.h"

#include "views/LineIcon.h"
#include "views/ScrollArea.h"

#include <QAbstractEventDispatcher>
#include <QAccessible>
#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

namespace {

constexpr int kTextLines = 4;      // more scroll, and the page keeps its room
constexpr int kHeightOfLine = 125; // of the window: large ones show more lines
constexpr int kReadableWidth = 60; // characters of a line
constexpr QMargins kMargins(8, 4, 8, 4);

const char* IconOf(Notice::Kind kind) {
    switch (kind) {
    case Notice::Kind::Information:
        return "information";
    case Notice::Kind::Success:
        return "done";
    case Notice::Kind::Warning:
    case Notice::Kind::Failure:
        return "warning";
    }
    return "";
}

// Over the background; transparent for good news.
QColor TintOf(Notice::Kind kind) {
    switch (kind) {
    case Notice::Kind::Information:
    case Notice::Kind::Success:
        return Qt::transparent;
    case Notice::Kind::Warning:
        return {0xE0, 0xA0, 0x00, 0x30};
    case Notice::Kind::Failure:
        return {0xD0, 0x30, 0x30, 0x30};
    }
    return {};
}

// As high as its texts, up to a few lines.
class FewLines : public views::ScrollArea {
public:
    explicit FewLines(QWidget* texts) : ScrollArea(texts) {
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        setSizePolicy(policy);
    }

    [[nodiscard]] QSize minimumSizeHint() const override { return {0, LineHeight()}; }
    [[nodiscard]] int heightForWidth(int width) const override {
        const int lines = std::max(kTextLines, window()->height() / kHeightOfLine);
        const int whole = widget()->heightForWidth(width);
        const int most = lines * LineHeight();
        return whole <= most + LineHeight() ? whole : most; // nothing scrolls by a single line
    }

protected:
    bool event(QEvent* event) override {
        if (event->type() == QEvent::LayoutRequest) // of the texts
            updateGeometry();
        return ScrollArea::event(event);
    }
    void showEvent(QShowEvent* event) override {
        ScrollArea::showEvent(event);
        QEvent changed(QEvent::LayoutRequest); // while it was hidden
        this->event(&changed);
    }

private:
    [[nodiscard]] int LineHeight() const { return widget()->fontMetrics().lineSpacing(); }
};

} // namespace

NoticeBar::NoticeBar(QWidget* parent)
    : QFrame(parent), m_icon(new QLabel), m_text(new QLabel),
      m_body(new QBoxLayout(QBoxLayout::LeftToRight)), m_buttons(new QWidget),
      m_offers(new QHBoxLayout), m_fold(new QToolButton), m_close(new QToolButton),
      m_details(new QLabel) {
    setObjectName(QStringLiteral("notice"));
    setFrameShape(QFrame::StyledPanel);
    m_text->setObjectName(QStringLiteral("lblNotice"));
    for (QLabel* text : {m_text, m_details}) {
        text->setTextFormat(Qt::PlainText);
        text->setWordWrap(true);
        text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }
    m_fold->setObjectName(QStringLiteral("noticeDetails"));
    m_fold->setCheckable(true);
    m_fold->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_fold->setFocusPolicy(Qt::StrongFocus);
    connect(m_fold, &QToolButton::toggled, this, [this](bool isOpen) {
        m_fold->setArrowType(isOpen ? Qt::DownArrow : Qt::RightArrow);
        m_details->setVisible(isOpen);
    });
    m_close->setIcon(views::LineIcon(QStringLiteral("close")));
    m_close->setFocusPolicy(Qt::TabFocus);
    for (QToolButton* button : {m_fold, m_close})
        button->setAutoRaise(true);
    connect(m_close, &QToolButton::clicked, this, &QWidget::hide);
    NameButtons();
    auto* buttons = new QHBoxLayout(m_buttons);
    buttons->setContentsMargins({});
    buttons->addLayout(m_offers);
    buttons->addWidget(m_fold);
    buttons->addStretch(1);
    auto* texts = new QWidget;
    auto* lines = new QVBoxLayout(texts);
    lines->setContentsMargins({});
    lines->setSpacing(0);
    lines->addWidget(m_text);
    lines->addWidget(m_details);
    m_body->addWidget(new FewLines(texts), 1);
    m_body->addWidget(m_buttons);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargins);
    row->addWidget(m_icon);
    row->addLayout(m_body, 1);
    row->addWidget(m_close);
    Clear();
    hide();
    // A question to the user belongs to the action that asks it.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] {
                if (QApplication::activeModalWidget() == nullptr)
                    Age();
            });
}

void NoticeBar::Clear() {
    m_kind = Notice::Kind::Information;
    m_isValid = {};
    m_text->clear();
    m_details->clear();
    m_fold->setChecked(false);
    m_fold->setArrowType(Qt::RightArrow);
    m_details->hide();
    while (const QLayoutItem* item = m_offers->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater(); // it may be the one that was clicked
        delete item;
    }
}

void NoticeBar::Show(const Notice& notice) {
    const auto append = [](const QString& before, const QString& text) {
        if (before.contains(text))
            return before;
        return before.isEmpty() ? text : before + QLatin1Char('\n') + text;
    };
    const bool isReplaced = m_kind < Notice::Kind::Warning && notice.kind != Notice::Kind::Warning;
    if (m_isOld || isReplaced || !isVisibleTo(parentWidget()))
        Clear();
    m_isOld = false;
    m_kind = std::max(m_kind, notice.kind);
    if (notice.isValid)
        m_isValid = notice.isValid;
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize);
    m_icon->setPixmap(views::LineIcon(QString::fromLatin1(IconOf(m_kind)))
                          .pixmap(QSize(size, size), devicePixelRatioF()));
    m_text->setText(append(m_text->text(), notice.text));
    m_details->setText(append(m_details->text(), notice.details.trimmed()));
    m_fold->setHidden(m_details->text().isEmpty());
    for (const Notice::Offer& offer : notice.offers)
        AddOffer(offer);
    m_buttons->setHidden(m_fold->isHidden() && m_offers->isEmpty());
    PlaceButtons();
    setVisible(!m_text->text().isEmpty());
    QAccessibleEvent alert(m_text, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

// Of two offers of the same name, the later one counts.
void NoticeBar::AddOffer(const Notice::Offer& offer) {
    for (int i = 0; i < m_offers->count(); ++i)
        if (auto* same = qobject_cast<QPushButton*>(m_offers->itemAt(i)->widget());
            same->text() == offer.text) {
            delete m_offers->takeAt(i);
            same->deleteLater();
            break;
        }
    auto* button = new QPushButton(offer.text);
    button->setObjectName(QStringLiteral("noticeOffer"));
    connect(button, &QPushButton::clicked, this, [this, accept = offer.accept] {
        hide();
        accept();
    });
    m_offers->addWidget(button);
    button->show(); // together with the text
}

void NoticeBar::NameButtons() {
    m_fold->setText(tr("Details"));
    m_close->setToolTip(tr("Close this message"));
    m_close->setAccessibleName(m_close->toolTip());
}

void NoticeBar::PlaceButtons() {
    const QFontMetrics metrics = m_text->fontMetrics();
    const int readable = std::min(metrics.size(0, m_text->text()).width(),
                                  metrics.averageCharWidth() * kReadableWidth);
    const int beside =
        m_body->geometry().width() - m_body->spacing() - m_buttons->sizeHint().width();
    m_body->setDirection(beside < readable ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

void NoticeBar::changeEvent(QEvent* event) {
    if (event->type() == QEvent::LanguageChange)
        NameButtons();
    QFrame::changeEvent(event);
}

void NoticeBar::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().alternateBase());
    painter.fillRect(rect(), TintOf(m_kind));
    painter.end();
    QFrame::paintEvent(event);
}

void NoticeBar::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    PlaceButtons();
}

void NoticeBar::ClearOld() {
    if (m_isOld || (m_isValid && !m_isValid()))
        hide();
}

} // namespace qx::app
