#include "app/PageBook.h"

#include "views/ScrollArea.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

namespace {

constexpr int kIdRole = Qt::UserRole;
constexpr int kPresentRole = Qt::UserRole + 1;
constexpr int kListMargin = 24; // pixels beside the titles
constexpr int kIconSize = 20;
constexpr double kHeadingScale = 0.85;

} // namespace

PageBook::PageBook(QWidget* aboveList, QWidget* abovePages, QWidget* parent)
    : QWidget(parent), m_aboveList(aboveList), m_list(new QListWidget),
      m_stack(new QStackedWidget) {
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setIconSize({kIconSize, kIconSize});
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            return;
        m_stack->setCurrentWidget(LeafAt(row));
        emit Shown();
    });
    auto* left = new QVBoxLayout;
    left->addWidget(aboveList);
    left->addWidget(m_list, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(abovePages);
    right->addWidget(m_stack, 1);
    auto* row = new QHBoxLayout(this);
    row->addLayout(left);
    row->addLayout(right, 1);
}

void PageBook::Add(const QString& id, const QString& title, const QIcon& icon,
                   std::function<QWidget*()> make) {
    auto* item = new QListWidgetItem(icon, title, m_list);
    item->setData(kIdRole, id);
    item->setData(kPresentRole, true);
    item->setSizeHint(QSize(0, m_list->fontMetrics().height() + 10));
    m_leaves.push_back({std::move(make), nullptr});
}

void PageBook::AddHeading(const QString& title) {
    auto* item = new QListWidgetItem(title, m_list);
    item->setFlags(Qt::NoItemFlags);
    item->setData(Qt::AccessibleTextRole, title);
    QFont font = m_list->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * kHeadingScale);
    item->setFont(font);
    item->setForeground(palette().brush(QPalette::Active, QPalette::PlaceholderText));
    item->setSizeHint(QSize(0, m_list->fontMetrics().height() + 14));
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_leaves.push_back({{}, nullptr});
}

void PageBook::SetTitle(const QString& id, const QString& title, bool isPresent) {
    QListWidgetItem* item = ItemOf(id);
    if (item == nullptr)
        return;
    item->setText(title);
    item->setData(kPresentRole, isPresent);
    item->setForeground(
        palette().brush(isPresent ? QPalette::Active : QPalette::Disabled, QPalette::Text));
}

void PageBook::FitList() {
    int width = m_aboveList->sizeHint().width();
    for (int row = 0; row < m_list->count(); ++row)
        width = std::max(width, m_list->fontMetrics().horizontalAdvance(m_list->item(row)->text()) +
                                    kIconSize + 2 * m_list->frameWidth() + kListMargin);
    m_list->setFixedWidth(width);
    m_aboveList->setFixedWidth(width);
}

std::vector<PageBook::Listed> PageBook::Pages() const {
    std::vector<Listed> pages;
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem* item = m_list->item(row);
        if (const QString id = item->data(kIdRole).toString(); !id.isEmpty())
            pages.push_back({id, item->text(), item->data(kPresentRole).toBool()});
    }
    return pages;
}

QListWidgetItem* PageBook::ItemOf(const QString& id) const {
    for (int row = 0; row < m_list->count(); ++row)
        if (const QVariant own = m_list->item(row)->data(kIdRole); // headings have none
            own.isValid() && own.toString() == id)
            return m_list->item(row);
    return nullptr;
}

QWidget* PageBook::LeafAt(int row) {
    Leaf& leaf = m_leaves[static_cast<std::size_t>(row)];
    if (leaf.widget == nullptr) {
        leaf.widget = new views::ScrollArea(leaf.make());
        m_stack->addWidget(leaf.widget);
    }
    return leaf.widget;
}

void PageBook::Show(const QString& id) {
    if (QListWidgetItem* item = ItemOf(id))
        m_list->setCurrentItem(item);
}

void PageBook::FocusPage() {
    QWidget* page = m_stack->currentWidget();
    for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain())
        if (page->isAncestorOf(next) && next->isEnabled() && next->isVisibleTo(page) &&
            (next->focusPolicy() & Qt::TabFocus) != 0)
            return next->setFocus(Qt::ShortcutFocusReason);
}

QString PageBook::Current() const {
    const QListWidgetItem* item = m_list->currentItem();
    return item == nullptr ? QString() : item->data(kIdRole).toString();
}

QWidget* PageBook::Page(const QString& id) {
    const QListWidgetItem* item = ItemOf(id);
    return item == nullptr ? nullptr : LeafAt(m_list->row(item));
}

} // namespace qx::app
