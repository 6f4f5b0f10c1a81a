// BackupsPage: the backups made before writes, newest first, to view and to restore.
#pragma once

#include "app/Failure.h"
#include "app/Workbench.h"

#include <QWidget>

#include <vector>

class QPushButton;
class QTreeWidget;

namespace qx::app {

class BackupsPage : public QWidget {
    Q_OBJECT
public:
    explicit BackupsPage(Workbench& workbench, QWidget* parent = nullptr);

    // Lists the current backups.
    void Reload();

signals:
    void RestoreRequested(const host::BackupEntry& backup); // backup to keyboard
    void OpenRequested(const QString& file);                // the backup's document
    void Failed(const Failure& failure);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] const host::BackupEntry* Chosen() const;
    void Enable();

    Workbench& m_workbench;
    std::vector<host::BackupEntry> m_backups; // as listed
    QTreeWidget* m_list;
    QPushButton* m_restore;
    QPushButton* m_open;
};

} // namespace qx::app
