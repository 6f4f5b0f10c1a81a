// OverviewPage: the connected keyboard: the stages of its start-up, its identity and its modules.
#pragma once

#include "app/Failure.h"
#include "app/Workbench.h"

#include <QWidget>

class QFormLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QTableWidget;

namespace qx::app {

class OverviewPage : public QWidget {
    Q_OBJECT
public:
    explicit OverviewPage(Workbench& workbench, QWidget* parent = nullptr);

    // Shows why the keyboard is not connected, and what to check.
    void ShowFailure(const Failure& reason);

signals:
    void ConnectAgainRequested();
    void SimulatedKeyboardRequested();

private:
    void ShowStages();
    void ShowKeyboard();

    Workbench& m_workbench;
    QLabel* m_stages[3];
    QLabel* m_failure;
    QWidget* m_remedies;
    QGroupBox* m_keyboard; // shown while one is connected
    QFormLayout* m_identity;
    QTableWidget* m_directory;
};

} // namespace qx::app
