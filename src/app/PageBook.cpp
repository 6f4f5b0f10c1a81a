#include "app/PageBook.h"

#include "app/Help.h"
#include "views/KeyGrid.h"
#include "views/ScrollArea.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPainter>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

namespace {

constexpr int kIdRole = Qt::UserRole;
constexpr int kPresentRole = Qt::UserRole + 1;
constexpr int kCountRole = Qt::UserRole + 2;
constexpr int kListMargin = 24; // pixels beside the titles
constexpr int kIconSize = 20;
constexpr double kHeadingScale = 0.85;
constexpr int kCountMargin = 8;

// Draws the count at the right, and the titles and icons of absent pages dimmed.
class CountingDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const int count = index.data(kCountRole).toInt();
        if (count == 0)
            return;
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        const auto group = option.widget->isEnabled() ? QPalette::Active : QPalette::Disabled;
        painter->setPen(option.palette.color(group, isSelected ? QPalette::HighlightedText
                                                               : QPalette::PlaceholderText));
        painter->drawText(option.rect.adjusted(0, 0, -kCountMargin, 0),
                          Qt::AlignRight | Qt::AlignVCenter, QString::number(count));
        painter->restore();
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (!option->widget->isEnabled())
            option->palette = option->widget->palette(); // also for headings
        if (!index.data(kPresentRole).toBool() && !option->state.testFlag(QStyle::State_Selected))
            option->state.setFlag(QStyle::State_Enabled, false);
    }
};

// Those of spin boxes and the like belong to these.
std::vector<QWidget*> TextFields(const QWidget& page) {
    std::vector<QWidget*> fields;
    for (QWidget* each : page.findChildren<QWidget*>()) {
        const bool isOwn =
            !each->objectName().isEmpty() && !each->objectName().startsWith(QLatin1String("qt_"));
        const auto* line = qobject_cast<QLineEdit*>(each);
        const bool isTypedLine = line != nullptr && !line->isReadOnly(); // others show settings
        if (isOwn && (isTypedLine || qobject_cast<QPlainTextEdit*>(each) != nullptr))
            fields.push_back(each);
    }
    return fields;
}

} // namespace

PageBook::PageBook(QWidget* aboveList, QWidget* belowPages, QWidget* parent)
    : QWidget(parent), m_aboveList(aboveList), m_list(new QListWidget), m_absent(new QToolButton),
      m_stack(new QStackedWidget) {
    m_list->setObjectName(QStringLiteral("pages"));
    m_list->setAccessibleName(tr("Pages"));
    m_list->setIconSize({kIconSize, kIconSize});
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    m_list->setItemDelegate(new CountingDelegate(m_list));
    m_absent->setObjectName(QStringLiteral("absentPages"));
    m_absent->setCheckable(true);
    m_absent->setAutoRaise(true);
    m_absent->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_absent->setFocusPolicy(Qt::StrongFocus);
    connect(m_absent, &QToolButton::toggled, this, &PageBook::Fold);
    connect(m_list, &QListWidget::currentRowChanged, this, [this](int row) {
        if (row < 0)
            return;
        m_stack->setCurrentWidget(LeafAt(row));
        emit Shown();
    });
    // A screen reader selects without moving the current row.
    connect(m_list, &QListWidget::itemSelectionChanged, this, [this] {
        const QList<QListWidgetItem*> selected = m_list->selectedItems();
        if (!selected.isEmpty() && selected.front() != m_list->currentItem())
            m_list->setCurrentItem(selected.front());
    });
    auto* left = new QVBoxLayout;
    left->addWidget(aboveList);
    left->addWidget(m_list, 1);
    left->addWidget(m_absent);
    auto* right = new QVBoxLayout;
    right->addWidget(m_stack, 1);
    right->addWidget(belowPages);
    auto* row = new QHBoxLayout(this);
    row->addLayout(left);
    row->addLayout(right, 1);
    DescribeSettings(*this);
}

void PageBook::Add(const QString& id, const QString& title, const QIcon& icon,
                   std::function<QWidget*()> make) {
    auto* item = new QListWidgetItem(icon, title, m_list);
    item->setData(kIdRole, id);
    item->setSizeHint(QSize(0, m_list->fontMetrics().height() + 10));
    m_leaves.push_back({std::move(make), nullptr});
    SetPresent(id, true);
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
    item->setSizeHint(QSize(0, m_list->fontMetrics().height() + 8));
    item->setTextAlignment(Qt::AlignLeft | Qt::AlignBottom);
    m_leaves.push_back({{}, nullptr});
}

void PageBook::SetPresent(const QString& id, bool isPresent) {
    QListWidgetItem* item = ItemOf(id);
    if (item == nullptr)
        return;
    item->setData(kPresentRole, isPresent);
    const QString name = isPresent ? item->text() : tr("%1 (absent)").arg(item->text());
    item->setData(Qt::AccessibleTextRole, name);
    item->setToolTip(isPresent ? QString() : name);
}

void PageBook::SetCount(const QString& id, int count) {
    if (QListWidgetItem* item = ItemOf(id)) {
        item->setData(kCountRole, count);
        item->setData(Qt::AccessibleDescriptionRole,
                      count == 0 ? QString() : QString::number(count));
    }
}

void PageBook::FitList() {
    const QFontMetrics metrics = m_list->fontMetrics();
    const int countWidth = metrics.horizontalAdvance(QStringLiteral("000")) + kCountMargin;
    int width = m_aboveList->sizeHint().width();
    for (int row = 0; row < m_list->count(); ++row)
        width = std::max(width, metrics.horizontalAdvance(m_list->item(row)->text()) + kIconSize +
                                    2 * m_list->frameWidth() + kListMargin + countWidth);
    Fold();
    m_absent->setFixedWidth(width);
    m_list->setFixedWidth(width);
    m_aboveList->setFixedWidth(width);
}

// A heading without pages is hidden as well. The current page is never hidden.
void PageBook::Fold() {
    const QListWidgetItem* current = m_list->currentItem();
    if (current != nullptr && !current->data(kPresentRole).toBool())
        m_absent->setChecked(true);
    int absent = 0;
    bool hasPage = false;
    for (int row = m_list->count() - 1; row >= 0; --row) {
        QListWidgetItem* item = m_list->item(row);
        if (!item->data(kIdRole).isValid()) {
            item->setHidden(!hasPage);
            hasPage = false;
            continue;
        }
        const bool isPresent = item->data(kPresentRole).toBool();
        absent += isPresent ? 0 : 1;
        item->setHidden(!isPresent && !m_absent->isChecked());
        hasPage = hasPage || !item->isHidden();
    }
    if (current != nullptr)
        m_list->scrollToItem(current);
    m_absent->setVisible(absent > 0);
    const QString text =
        m_absent->isChecked() ? tr("Hide absent pages (%1)") : tr("Not in this keyboard (%1)");
    m_absent->setText(text.arg(absent));
    m_absent->setToolTip(tr("%n module(s) that this keyboard does not have", "", absent));
    m_absent->setArrowType(m_absent->isChecked() ? Qt::UpArrow : Qt::RightArrow);
}

std::vector<PageBook::Listed> PageBook::Pages() const {
    std::vector<Listed> pages;
    for (int row = 0; row < m_list->count(); ++row) {
        const QListWidgetItem* item = m_list->item(row);
        if (const QString id = item->data(kIdRole).toString(); !id.isEmpty())
            pages.push_back({id, item->data(Qt::AccessibleTextRole).toString(),
                             item->data(kPresentRole).toBool()});
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
        DescribeSettings(*leaf.widget);
        m_stack->addWidget(leaf.widget);
        const QStringList texts = m_texts[m_list->item(row)->data(kIdRole).toString()];
        const std::vector<QWidget*> fields = TextFields(*leaf.widget);
        for (std::size_t i = 0; texts.size() == std::ssize(fields) && i < fields.size(); ++i)
            fields[i]->metaObject()->userProperty().write(fields[i], texts[static_cast<int>(i)]);
    }
    return leaf.widget;
}

PageBook::Texts PageBook::TypedTexts() const {
    Texts texts = m_texts; // of pages that were not made again
    for (int row = 0; row < m_list->count(); ++row) {
        const QWidget* page = m_leaves[static_cast<std::size_t>(row)].widget;
        if (page == nullptr)
            continue;
        QStringList& typed = texts[m_list->item(row)->data(kIdRole).toString()];
        typed.clear();
        for (const QWidget* field : TextFields(*page))
            typed += field->metaObject()->userProperty().read(field).toString();
    }
    return texts;
}

void PageBook::Show(const QString& id) {
    if (QListWidgetItem* item = ItemOf(id)) {
        m_list->setCurrentItem(item);
        if (item->isHidden())
            Fold();
    }
}

void PageBook::FocusPage() {
    QWidget* page = m_stack->currentWidget();
    for (auto* grid : page->findChildren<views::KeyGrid*>()) {
        if (!grid->Selects() || !grid->isEnabled() || !grid->isVisibleTo(page))
            continue;
        grid->setFocus(Qt::ShortcutFocusReason);
        if (grid->FocusKey() < 0 && !grid->Keys().empty())
            grid->Reach(grid->Keys().front().index);
        return;
    }
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
