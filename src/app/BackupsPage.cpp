#include "app/BackupsPage.h"

#include "app/DifferenceTree.h"
#include "app/LocalTime.h"
#include "app/Paths.h"
#include "host/VisibleText.h"
#include "views/Bindings.h"
#include "views/PlainText.h"
#include "views/RoomyRows.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSplitter>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

using views::ToQt;

namespace {

enum Column { kTime, kKeyboard, kUnit, kDocument, kChanges, kColumns };
constexpr int kGap = 24;  // pixels between columns
constexpr int kPause = 5; // milliseconds

// To their contents, within limits; a heading always has room.
void FitColumns(QTreeWidget& table, int most) {
    for (int column = 0; column < table.columnCount() - 1; ++column) {
        table.resizeColumnToContents(column);
        const int wanted = std::min(table.header()->sectionSize(column) + kGap, most);
        table.header()->resizeSection(column,
                                      std::max(wanted, table.header()->sectionSizeHint(column)));
    }
}

} // namespace

BackupsPage::BackupsPage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_list(new QTreeWidget), m_summary(new QLabel),
      m_changes(new DifferenceTree({}, tr("In the document"), tr("In the backup"))),
      m_parts(new QSplitter(Qt::Vertical)), m_restore(new QPushButton(tr("&Restore to keyboard…"))),
      m_open(new QPushButton(tr("Open as do&cument"))), m_describing(new QTimer(this)) {
    auto* text =
        new QLabel(tr("Before each write, the keyboard's contents are saved here. Each backup "
                      "is kept for at least %1 days.")
                       .arg(host::BackupStore::kDays));
    text->setWordWrap(true);
    m_parts->setChildrenCollapsible(false);
    m_parts->addWidget(m_list);
    m_parts->addWidget(MakePreview());
    m_parts->setStretchFactor(1, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(text);
    column->addWidget(m_parts, 1);
    column->addLayout(MakeButtons());

    m_list->setObjectName(QStringLiteral("backups"));
    m_list->setAccessibleName(tr("Backups"));
    m_list->setHeaderLabels(
        {tr("Time"), tr("Keyboard"), tr("Unit"), tr("Then written"), tr("Differences")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_list->setItemDelegate(new views::RoomyRows(m_list));
    m_list->headerItem()->setToolTip(kDocument, tr("The document that was written next"));
    m_list->headerItem()->setToolTip(
        kChanges, tr("How many settings of the backup differ from the document"));
    connect(m_list, &QTreeWidget::itemSelectionChanged, this, [this] {
        Enable();
        ShowPreview();
    });
    connect(m_describing, &QTimer::timeout, this, &BackupsPage::DescribeNext);
    connect(&workbench, &Workbench::KeyboardChanged, this, &BackupsPage::Enable);
    connect(&workbench, &Workbench::DocumentChanged, this, &BackupsPage::CompareAgain);
    Enable();
    ShowPreview();
}

QWidget* BackupsPage::MakePreview() {
    m_summary->setObjectName(QStringLiteral("backupSummary"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_changes->setObjectName(QStringLiteral("backupChanges"));
    connect(m_changes, &DifferenceTree::Chosen, this, &BackupsPage::PlaceChosen);
    auto* preview = new QWidget;
    auto* column = new QVBoxLayout(preview);
    column->setContentsMargins({});
    column->addWidget(m_summary);
    column->addWidget(m_changes, 1);
    return preview;
}

QLayout* BackupsPage::MakeButtons() {
    m_restore->setObjectName(QStringLiteral("restoreBackup"));
    m_open->setObjectName(QStringLiteral("openBackup"));
    connect(m_restore, &QPushButton::clicked, this, [this] {
        if (const auto* backup = Chosen())
            emit RestoreRequested(host::BackupEntry(*backup)); // a copy: the list changes meanwhile
        Reload();
    });
    connect(m_open, &QPushButton::clicked, this, [this] {
        if (const auto* backup = Chosen())
            emit OpenRequested(ToQt(backup->document));
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_restore);
    buttons->addWidget(m_open);
    buttons->addStretch(1);
    return buttons;
}

void BackupsPage::showEvent(QShowEvent* event) {
    Reload();
    QWidget::showEvent(event);
}

// No higher than its rows. As long as their number is the same, it keeps the user's height.
void BackupsPage::FitHeight() {
    constexpr int kRows = 8; // at first
    const auto heightOf = [this](int rows) {
        return m_list->header()->height() + 2 * m_list->frameWidth() +
               rows * m_list->sizeHintForRow(0);
    };
    const int rows = m_list->topLevelItemCount();
    const int most = rows == 0 ? QWIDGETSIZE_MAX : heightOf(rows);
    if (m_list->maximumHeight() == most)
        return;
    m_list->setMaximumHeight(most);
    m_parts->setSizes({heightOf(std::min(rows, kRows)), m_parts->height()});
}

// The chosen backup stays chosen.
void BackupsPage::Reload() {
    const std::string chosen = Chosen() != nullptr ? Chosen()->id : "";
    m_list->clear();
    m_backups.clear();
    try {
        m_backups = m_workbench.Records().backups.List();
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("The backups could not be listed."), error));
    }
    std::stable_sort(m_backups.begin(), m_backups.end(),
                     [](const auto& a, const auto& b) { return a.time > b.time; });
    for (const host::BackupEntry& backup : m_backups) {
        auto* item = new QTreeWidgetItem(m_list, {LocalTime(backup.time), ToQt(backup.keyboard)});
        if (backup.id == chosen)
            m_list->setCurrentItem(item);
    }
    m_list->hideColumn(kUnit);
    FitHeight();
    FitColumns(*m_list, width() / 3);
    Enable();
    CompareAgain();
}

void BackupsPage::CompareAgain() {
    if (!isVisible())
        return;
    m_nextToDescribe = 0;
    m_describing->start(kPause);
    ShowPreview();
}

// Fills in what is known only from the backup's files.
void BackupsPage::DescribeNext() {
    if (!isVisible() || m_nextToDescribe >= m_list->topLevelItemCount()) {
        m_describing->stop();
        return FitColumns(*m_list, width() / 3);
    }
    if (m_workbench.IsBusy())
        return;
    const host::BackupEntry& entry = m_backups[static_cast<std::size_t>(m_nextToDescribe)];
    QTreeWidgetItem* item = m_list->topLevelItem(m_nextToDescribe++);
    try {
        const host::Backup backup = m_workbench.Records().backups.Load(entry);
        item->setText(kUnit, ToQt(host::VisibleText(backup.till.unit)));
        if (!backup.till.unit.empty())
            m_list->showColumn(kUnit);
        const QString document = ToQt(host::VisibleText(backup.document));
        item->setText(kDocument,
                      document.section(QRegularExpression(QStringLiteral("[/\\\\]")), -1));
        item->setToolTip(kDocument, views::Plain(document));
        item->setText(
            kChanges,
            QLocale().toString(static_cast<qulonglong>(
                m_workbench.ChangesBy(host::ConfigurationDocument::Load(entry.document)).size())));
    } catch (const std::exception& error) {
        item->setText(kChanges, tr("damaged"));
        item->setToolTip(kChanges, views::Plain(FailureOf({}, error).text));
    }
}

void BackupsPage::ShowPreview() {
    m_changes->Fill({});
    m_changes->setEnabled(Chosen() != nullptr);
    if (Chosen() == nullptr)
        return m_summary->setText(m_backups.empty() ? QString()
                                                    : tr("Choose a backup to see its changes."));
    try {
        const auto changes =
            m_workbench.ChangesBy(host::ConfigurationDocument::Load(Chosen()->document));
        m_summary->setText(changes.empty()
                               ? tr("The backup has the same settings as the document.")
                               : tr("%n setting(s) of the backup differ from the document.", "",
                                    static_cast<int>(changes.size())));
        m_changes->Fill(changes);
    } catch (const std::exception& error) {
        m_summary->setText(FailureOf(tr("The backup cannot be compared."), error).text);
    }
}

const host::BackupEntry* BackupsPage::Chosen() const {
    const QList<QTreeWidgetItem*> selected = m_list->selectedItems();
    const int row = selected.isEmpty() ? -1 : m_list->indexOfTopLevelItem(selected.front());
    return row < 0 || static_cast<std::size_t>(row) >= m_backups.size()
               ? nullptr
               : &m_backups[static_cast<std::size_t>(row)];
}

void BackupsPage::Enable() {
    m_restore->setEnabled(Chosen() != nullptr && m_workbench.IsConnected());
    m_open->setEnabled(Chosen() != nullptr);
}

} // namespace qx::app
