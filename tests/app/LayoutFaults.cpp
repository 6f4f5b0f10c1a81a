#include "LayoutFaults.h"

#include "views/KeyGrid.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTabBar>

namespace qx::test {

namespace {

constexpr int kSlack = 1; // pixels, of rounding
constexpr int kRow = 24;  // pixels: what scrolls by less hides nothing worth a scroll bar

QString PathOf(const QWidget& widget) {
    QString path;
    for (const QWidget* each = &widget; each != nullptr; each = each->parentWidget())
        if (!each->objectName().startsWith(QLatin1String("qt_")) && !each->objectName().isEmpty())
            path.prepend(u'/' + each->objectName());
    return path + QStringLiteral(" (%1)").arg(QLatin1String(widget.metaObject()->className()));
}

bool IsCut(const QSize& has, const QSize& needs) {
    return has.width() + kSlack < needs.width() || has.height() + kSlack < needs.height();
}

// The text that the widget cannot show completely.
QString CutText(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        if (label->text().isEmpty())
            return {};
        const QSize needs =
            label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
        return IsCut(label->size(), needs) ? label->text() : QString();
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return !button->text().isEmpty() && IsCut(button->size(), button->minimumSizeHint())
                   ? button->text()
                   : QString();
    if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
        return group->width() < group->minimumSizeHint().width() ? group->title() : QString();
    if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
        const QString shown = line->text().isEmpty() ? line->placeholderText() : QString();
        const QMargins margins = line->textMargins();
        const int room = line->width() - margins.left() - margins.right() - 8;
        return room < line->fontMetrics().horizontalAdvance(shown) ? shown : QString();
    }
    if (const auto* box = qobject_cast<const QComboBox*>(&widget))
        return box->width() + kSlack < box->minimumSizeHint().width() ? box->currentText()
                                                                      : QString();
    if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
        for (int i = 0; header->orientation() == Qt::Horizontal && i < header->count(); ++i)
            if (header->sectionSize(i) > 0 &&
                header->sectionSize(i) + kSlack < header->sectionSizeHint(i))
                return header->model()->headerData(i, Qt::Horizontal).toString();
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
        for (int i = 0; i < tabs->count(); ++i)
            if (!tabs->rect().contains(tabs->tabRect(i).adjusted(kSlack, kSlack, -kSlack, -kSlack)))
                return tabs->tabText(i);
    }
    return {};
}

// The label of a key that sends nothing and is not written out on its cap. Its page may show the
// number or the label in the corner.
QString CutCap(const views::KeyGrid& grid) {
    const views::KeyPlacing placing(grid.Keys(), grid.rect(), grid.devicePixelRatioF());
    for (const views::KeyCap& cap : grid.Keys())
        if (cap.state != views::KeyState::Programmed)
            for (const views::KeyText& text :
                 views::KeyTexts(placing.Map(cap.place), cap, placing, {8}))
                if (text.text.text().contains(u'…') && !(cap.caption + cap.legend).contains(u'…'))
                    return cap.caption + cap.legend;
    return {};
}

// The least by which the area can need to scroll: in pixels, or in items of a list or lines of a
// text.
int RowOf(const QAbstractScrollArea& area) {
    const auto* list = qobject_cast<const QAbstractItemView*>(&area);
    const bool isOfItems =
        list != nullptr && list->verticalScrollMode() == QAbstractItemView::ScrollPerItem;
    return isOfItems || qobject_cast<const QPlainTextEdit*>(&area) != nullptr ? 1 : kRow;
}

void CheckChildren(const QWidget& parent, QStringList& faults) {
    const auto children = parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (const QWidget* child : children) {
        if (child->isWindow() || !child->isVisible() || child->size().isEmpty())
            continue;
        if (parent.layout() != nullptr && !parent.rect().contains(child->geometry()))
            faults += PathOf(*child) + QStringLiteral(" is beyond its parent");
        for (const QWidget* other : children)
            if (parent.layout() != nullptr && other < child && other->isVisible() &&
                !other->isWindow()) {
                const QRect both = child->geometry() & other->geometry();
                if (both.width() > kSlack && both.height() > kSlack)
                    faults += PathOf(*child) + QStringLiteral(" is over ") + PathOf(*other);
            }
        if (const QString text = CutText(*child); !text.isEmpty())
            faults += PathOf(*child) + QStringLiteral(" has no room for \"%1\"").arg(text);
        if (const auto* grid = qobject_cast<const views::KeyGrid*>(child))
            if (const QString text = CutCap(*grid); !text.isEmpty())
                faults += PathOf(*child) + QStringLiteral(" has no room for \"%1\"").arg(text);
        if (const auto* area = qobject_cast<const QScrollArea*>(child))
            if (area->widget() != nullptr && area->viewport()->width() < area->widget()->width())
                faults += PathOf(*child) + QStringLiteral(" scrolls sideways, %1 of %2 pixels")
                                               .arg(area->viewport()->width())
                                               .arg(area->widget()->width());
        if (const auto* area = qobject_cast<const QAbstractScrollArea*>(child)) {
            const QScrollBar& bar = *area->verticalScrollBar();
            if (bar.isVisible() && bar.maximum() - bar.minimum() < RowOf(*area))
                faults += PathOf(*child) + QStringLiteral(" scrolls by %1 of %2 only")
                                               .arg(bar.maximum() - bar.minimum())
                                               .arg(RowOf(*area));
        }
        CheckChildren(*child, faults);
    }
}

} // namespace

QStringList LayoutFaults(const QWidget& window) {
    QStringList faults;
    CheckChildren(window, faults);
    return faults;
}

} // namespace qx::test
