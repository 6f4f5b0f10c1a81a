#include "app/BackupsPage.h"

#include "app/LocalTime.h"
#include "app/Paths.h"
#include "views/Bindings.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace qx::app {

using views::ToQt;

BackupsPage::BackupsPage(Workbench& workbench, QWidget* parent)
    : QWidget(parent), m_workbench(workbench), m_list(new QTreeWidget),
      m_restore(new QPushButton(tr("&Restore to keyboard…"))),
      m_open(new QPushButton(tr("Open as do&cument"))) {
    auto* text = new QLabel(
        tr("Before each write, everything that the keyboard holds is saved here. Each backup "
           "is kept for at least %1 days.")
            .arg(host::BackupStore::kDays));
    text->setWordWrap(true);
    m_list->setObjectName(QStringLiteral("backups"));
    m_list->setAccessibleName(tr("Backups"));
    m_list->setHeaderLabels({tr("Time"), tr("Keyboard")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAlternatingRowColors(true);
    m_restore->setObjectName(QStringLiteral("restoreBackup"));
    m_open->setObjectName(QStringLiteral("openBackup"));
    connect(m_list, &QTreeWidget::currentItemChanged, this, &BackupsPage::Enable);
    connect(m_restore, &QPushButton::clicked, this, [this] {
        if (const auto* backup = Chosen())
            emit RestoreRequested(host::BackupEntry(*backup)); // a copy: the list changes meanwhile
        Reload();
    });
    connect(m_open, &QPushButton::clicked, this, [this] {
        if (const auto* backup = Chosen())
            emit OpenRequested(ToQt(backup->document));
    });
    connect(&workbench, &Workbench::KeyboardChanged, this, &BackupsPage::Enable);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_restore);
    buttons->addWidget(m_open);
    buttons->addStretch(1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(text);
    column->addWidget(m_list, 1);
    column->addLayout(buttons);
    Enable();
}

void BackupsPage::showEvent(QShowEvent* event) {
    Reload();
    QWidget::showEvent(event);
}

void BackupsPage::Reload() {
    m_list->clear();
    m_backups.clear();
    try {
        m_backups = m_workbench.Records().backups.List();
    } catch (const std::exception& error) {
        emit Failed(FailureOf(tr("The backups could not be listed."), error));
    }
    std::stable_sort(m_backups.begin(), m_backups.end(),
                     [](const auto& a, const auto& b) { return a.time > b.time; });
    for (const host::BackupEntry& backup : m_backups)
        new QTreeWidgetItem(m_list, {LocalTime(backup.time), ToQt(backup.keyboard)});
    m_list->resizeColumnToContents(0);
    m_list->header()->resizeSection(0, m_list->header()->sectionSize(0) + 24);
    Enable();
}

const host::BackupEntry* BackupsPage::Chosen() const {
    const int row = m_list->indexOfTopLevelItem(m_list->currentItem());
    return row < 0 ? nullptr : &m_backups[static_cast<std::size_t>(row)];
}

void BackupsPage::Enable() {
    m_restore->setEnabled(m_list->currentItem() != nullptr && m_workbench.IsConnected());
    m_open->setEnabled(m_list->currentItem() != nullptr);
}

} // namespace qx::app
