#include "app/ReviewSheet.h"

#include "app/Places.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"
#include "views/PlainText.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <map>

namespace qx::app {

using views::ToQt;

namespace {

enum Column { kSetting, kNow, kAfter, kShow, kColumns };
constexpr int kPlaceRole = Qt::UserRole;

void Fill(QTreeWidget& tree, const std::vector<host::Difference>& differences) {
    std::map<std::string_view, QTreeWidgetItem*> sections;
    QFont underlined = tree.font();
    underlined.setUnderline(true);
    for (const host::Difference& difference : differences) {
        const std::string_view key = SectionOfPlace(difference.place);
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
            section, {NameInSection(difference.name), ValueText(difference.from),
                      ValueText(difference.to), ReviewSheet::tr("Show")});
        item->setData(kSetting, kPlaceRole, ToQt(difference.place));
        item->setFont(kShow, underlined);
        for (int column = 0; column < kShow; ++column)
            item->setToolTip(column, views::Plain(item->text(column)));
        item->setToolTip(kShow, ReviewSheet::tr("Show this change on its page"));
    }
    tree.expandAll();
}

// A warning for users who write one document to several keyboards; empty if the keyboard keeps its
// identifier.
QString IdentifierWarning(const host::WritePlan& plan) {
    if (plan.ReplacesIdentifier())
        return ReviewSheet::tr("The keyboard's identifier is replaced by another one. A document "
                               "for several keyboards leaves the identifier out (qxconf upload "
                               "--no-identifier); each keyboard then keeps its own.");
    if (plan.GivesIdentifier())
        return ReviewSheet::tr("The keyboard has no identifier and is given one. A document for "
                               "several keyboards leaves the identifier out (qxconf upload "
                               "--no-identifier); otherwise they can no longer be told apart.");
    return {};
}

} // namespace

ReviewSheet::ReviewSheet(const host::WritePlan& plan, const QString& title,
                         const QString& keyboardName, const QString& absentSections,
                         QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("reviewSheet"));
    setWindowTitle(title);
    const int count = static_cast<int>(plan.settings.size());
    const int bytes = static_cast<int>(plan.BytesToSend());
    const QString change =
        count > 0 ? tr("This changes %n setting(s) of the keyboard %1.", "", count)
                  : tr("This changes no setting of the keyboard %1, only bytes that no "
                       "setting uses.");
    auto* heading = new QLabel(change.arg(keyboardName));
    heading->setTextFormat(Qt::PlainText);
    heading->setWordWrap(true);
    auto* tree = new QTreeWidget;
    tree->setObjectName(QStringLiteral("changes"));
    tree->setAccessibleName(tr("Changes"));
    tree->setHeaderLabels({tr("Setting"), tr("In the keyboard now"), tr("After writing"), {}});
    tree->setRootIsDecorated(false);
    tree->setAlternatingRowColors(true);
    tree->setUniformRowHeights(true);
    Fill(*tree, plan.settings);
    tree->header()->setStretchLastSection(false);
    tree->header()->setSectionResizeMode(kShow, QHeaderView::ResizeToContents);
    tree->header()->setSectionResizeMode(kAfter, QHeaderView::Stretch);
    tree->header()->resizeSection(kSetting, 340);
    tree->header()->resizeSection(kNow, 200);

    auto* hint = new QLabel;
    hint->setWordWrap(true);
    hint->setText(tr("%n byte(s) are sent. What the keyboard holds now is saved as a backup first; "
                     "what is written is read back and compared.",
                     "", bytes));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Cancel)->setDefault(true);
    auto* write = buttons->addButton(tr("&Write to keyboard"), QDialogButtonBox::AcceptRole);
    write->setObjectName(QStringLiteral("cmdWrite"));
    write->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    const auto choose = [this](const QTreeWidgetItem* item) {
        m_place = item->data(kSetting, kPlaceRole).toString().toStdString();
        if (!m_place.empty())
            reject();
    };
    connect(tree, &QTreeWidget::itemClicked, this, [=](QTreeWidgetItem* item, int column) {
        if (column == kShow)
            choose(item);
    });
    connect(tree, &QTreeWidget::itemActivated, this, choose); // Enter or a double click

    auto* column = new QVBoxLayout(this);
    column->addWidget(heading);
    const auto note = [&](const char* name, const QString& text) {
        auto* label = new QLabel(text);
        label->setObjectName(QLatin1String(name));
        label->setWordWrap(true);
        column->addWidget(label);
    };
    if (const QString warning = IdentifierWarning(plan); !warning.isEmpty())
        note("identifierWarning", warning);
    if (!absentSections.isEmpty())
        note(
            "absentSections",
            tr("The keyboard has no module for these, which are left out: %1").arg(absentSections));
    column->addWidget(tree, 1);
    column->addWidget(hint);
    column->addWidget(buttons);
    resize(820, 520);
    if (const QTreeWidgetItem* section = tree->topLevelItem(0))
        tree->setCurrentItem(section->child(0));
    tree->setFocus();
}

void ReviewSheet::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        QDialog::keyPressEvent(event);
}

} // namespace qx::app
