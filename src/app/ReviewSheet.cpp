#include "app/ReviewSheet.h"

#include "app/ControlTexts.h"
#include "app/Places.h"
#include "views/Bindings.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace qx::app {

using views::ToQt;

namespace {

enum Column { kSetting, kNow, kAfter, kColumns };
constexpr int kPlaceRole = Qt::UserRole;

void Fill(QTreeWidget& tree, const std::vector<host::Difference>& differences) {
    std::map<std::string, QTreeWidgetItem*> sections;
    for (const host::Difference& difference : differences) {
        const std::string key = SectionOfPlace(difference.place);
        QTreeWidgetItem*& section = sections[key];
        if (section == nullptr) {
            section = new QTreeWidgetItem(&tree, {SectionTitle(key)});
            section->setFirstColumnSpanned(true);
            section->setFlags(Qt::ItemIsEnabled);
            QFont bold = section->font(kSetting);
            bold.setBold(true);
            section->setFont(kSetting, bold);
        }
        auto* item = new QTreeWidgetItem(
            section, {ToQt(difference.name), ToQt(difference.from), ToQt(difference.to)});
        item->setData(kSetting, kPlaceRole, ToQt(difference.place));
        for (int column = 0; column < kColumns; ++column)
            item->setToolTip(column, item->text(column));
    }
    tree.expandAll();
}

} // namespace

ReviewSheet::ReviewSheet(const std::vector<host::Difference>& differences,
                         const QString& keyboardName, const QString& absentSections,
                         QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("reviewSheet"));
    setWindowTitle(tr("Write to keyboard"));
    const int count = static_cast<int>(differences.size());
    auto* heading = new QLabel(tr("Writing changes %n setting(s) of the keyboard %1.", "", count)
                                   .arg(keyboardName.toHtmlEscaped()));
    heading->setWordWrap(true);
    auto* tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("changes"));
    tree->setAccessibleName(tr("Changes"));
    tree->setHeaderLabels({tr("Setting"), tr("In the keyboard now"), tr("After writing")});
    tree->setRootIsDecorated(false);
    tree->setAlternatingRowColors(true);
    tree->setUniformRowHeights(true);
    Fill(*tree, differences);
    tree->header()->setStretchLastSection(true);
    tree->header()->resizeSection(kSetting, 320);
    tree->header()->resizeSection(kNow, 200);

    auto* hint = new QLabel;
    hint->setWordWrap(true);
    hint->setText(
        tr("What is written is read back and compared. Double-click a change to see it."));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    auto* write = buttons->addButton(tr("Write to keyboard"), QDialogButtonBox::AcceptRole);
    write->setObjectName(QStringLiteral("cmdWrite"));
    write->setDefault(true);
    auto* show = buttons->addButton(tr("Show this change"), QDialogButtonBox::ActionRole);
    show->setObjectName(QStringLiteral("cmdShow"));
    show->setEnabled(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const auto placeOf = [](const QTreeWidgetItem* item) {
        return item == nullptr ? QString() : item->data(kSetting, kPlaceRole).toString();
    };
    connect(tree, &QTreeWidget::currentItemChanged, this,
            [=](QTreeWidgetItem* item) { show->setEnabled(!placeOf(item).isEmpty()); });
    const auto choose = [=, this] {
        m_place = placeOf(tree->currentItem()).toStdString();
        if (!m_place.empty())
            reject();
    };
    connect(show, &QPushButton::clicked, this, choose);
    connect(tree, &QTreeWidget::itemDoubleClicked, this, choose);

    auto* column = new QVBoxLayout(this);
    column->addWidget(heading);
    if (!absentSections.isEmpty()) {
        auto* absent = new QLabel(
            tr("The keyboard has no module for these, which are left out: %1").arg(absentSections));
        absent->setWordWrap(true);
        column->addWidget(absent);
    }
    column->addWidget(tree, 1);
    column->addWidget(hint);
    column->addWidget(buttons);
    resize(820, 520);
    tree->setFocus();
}

} // namespace qx::app
