// BackupsPage: the backups made before writes, newest first, to view and to restore. For the chosen
// one it shows the settings that differ from the document.
#pragma once

#include "app/Failure.h"
#include "app/Workbench.h"

#include <QWidget>

#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QSplitter;
class QTimer;
class QTreeWidget;

namespace qx::app {

class DifferenceTree;

class BackupsPage : public QWidget {
    Q_OBJECT
public:
    explicit BackupsPage(Workbench& workbench, QWidget* parent = nullptr);

    // Lists the current backups.
    void Reload();

signals:
    void RestoreRequested(const host::BackupEntry& backup); // backup to keyboard
    void OpenRequested(const QString& file);                // the backup's document
    void PlaceChosen(const std::string& place);             // of a setting that differs
    void Failed(const Failure& failure);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* MakePreview();
    [[nodiscard]] QLayout* MakeButtons();
    [[nodiscard]] const host::BackupEntry* Chosen() const;
    void Enable();
    void FitHeight();
    void DescribeNext();
    void CompareAgain();
    void ShowPreview();

    Workbench& m_workbench;
    std::vector<host::BackupEntry> m_backups; // as listed
    QTreeWidget* m_list;
    QLabel* m_summary;
    DifferenceTree* m_changes;
    QSplitter* m_parts; // the list and the changes
    QPushButton* m_restore;
    QPushButton* m_open;
    QTimer* m_describing; // one backup at a time, so that many do not hold up the window
    int m_nextToDescribe = 0;
};

} // namespace qx::app
