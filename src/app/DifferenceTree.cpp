#include "app/DifferenceTree.h"

#include "app/Places.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QHeaderView>

#include <map>

namespace qx::app {

namespace {

enum Column { kSetting, kFrom, kTo, kShow };
constexpr int kPlaceRole = Qt::UserRole;
constexpr int kRowGap = 6; // pixels

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
    Fill(differences);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(kShow, QHeaderView::ResizeToContents);
    header()->setSectionResizeMode(kTo, QHeaderView::Stretch);
    header()->setMinimumSectionSize(header()->sectionSizeHint(kTo));
    header()->resizeSection(kSetting, 340);
    header()->resizeSection(kFrom, 200);
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
            section->setSizeHint(kSetting, QSize(0, fontMetrics().height() + kRowGap)); // of all
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
    if (const QTreeWidgetItem* section = topLevelItem(0))
        setCurrentItem(section->child(0));
}

} // namespace qx::app
