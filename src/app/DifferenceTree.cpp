#include "app/DifferenceTree.h"

#include "app/Places.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"
#include "views/PlainText.h"
#include "views/RoomyRows.h"

#include <QHeaderView>

#include <algorithm>
#include <map>

namespace qx::app {

namespace {

enum Column { kSetting, kFrom, kTo, kShow };
constexpr int kPlaceRole = Qt::UserRole;
constexpr int kGap = 16; // pixels between columns

} // namespace

DifferenceTree::DifferenceTree(const std::vector<host::Difference>& differences,
                               const QString& from, const QString& to, QWidget* parent)
    : QTreeWidget(parent) {
    setObjectName(QStringLiteral("changes"));
    setAccessibleName(tr("Changes"));
    setHeaderLabels({tr("Setting"), from, to, {}});
    setRootIsDecorated(false);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setItemDelegate(new views::RoomyRows(this));
    Fill(differences);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(kShow, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(kTo, QHeaderView::Stretch);
    const auto choose = [this](const QTreeWidgetItem* item) {
        const std::string place = item->data(kSetting, kPlaceRole).toString().toStdString();
        if (!place.empty())
            emit Chosen(place);
    };
    connect(this, &QTreeWidget::itemClicked, this, [choose](QTreeWidgetItem* item, int column) {
        if (column == kShow)
            choose(item);
    });
    connect(this, &QTreeWidget::itemActivated, this, choose); // Enter or a double click
}

void DifferenceTree::Fill(const std::vector<host::Difference>& differences) {
    clear();
    std::map<std::string_view, QTreeWidgetItem*> sections;
    QFont underlined = font();
    underlined.setUnderline(true);
    for (const host::Difference& difference : differences) {
        const std::string_view key = SectionOfPlace(difference.place);
        QTreeWidgetItem*& section = sections[key];
        if (section == nullptr) {
            section = new QTreeWidgetItem(this, {SectionTitle(key)});
            section->setFirstColumnSpanned(true);
            section->setFlags(Qt::ItemIsEnabled);
            QFont bold = section->font(kSetting);
            bold.setBold(true);
            section->setFont(kSetting, bold);
        }
        auto* item = new QTreeWidgetItem(section, {NameInSection(difference.name),
                                                   ValueText(difference.from),
                                                   ValueText(difference.to), tr("Show")});
        item->setData(kSetting, kPlaceRole, views::ToQt(difference.place));
        item->setFont(kShow, underlined);
        for (int column = 0; column < kShow; ++column)
            item->setToolTip(column, views::Plain(item->text(column)));
        item->setToolTip(kShow, tr("Show this change on its page"));
    }
    expandAll();
    if (const QTreeWidgetItem* section = topLevelItem(0)) // where the keyboard begins
        setCurrentItem(section->child(0), kSetting, QItemSelectionModel::NoUpdate);
    FitColumns();
}

// Columns are as wide as their contents. If there is no room for that, each value gets at least a
// quarter of the width, and the names get the rest.
void DifferenceTree::FitColumns() {
    const int all = viewport()->width() - header()->sectionSize(kShow);
    const auto widthOf = [this](int column, int most) {
        return std::max(std::min(sizeHintForColumn(column) + kGap, most),
                        header()->sectionSizeHint(column));
    };
    const int most = std::max(all / 4, (all - widthOf(kSetting, all)) / 2);
    const int from = widthOf(kFrom, most);
    header()->resizeSection(kFrom, from);
    header()->resizeSection(kSetting, widthOf(kSetting, all - from - widthOf(kTo, most)));
}

void DifferenceTree::resizeEvent(QResizeEvent* event) {
    QTreeWidget::resizeEvent(event);
    FitColumns();
}

} // namespace qx::app
