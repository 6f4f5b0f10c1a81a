// KeyboardMenu: the commands on the keyboard: read, write, recover an interrupted write, and the
// choice of keyboard.
#pragma once

#include "app/Transfers.h"
#include "app/Workbench.h"

#include <QObject>

class QAction;
class QMenu;
class QWidget;

namespace qx::app {

class KeyboardMenu : public QObject {
    Q_OBJECT
public:
    KeyboardMenu(Workbench& workbench, Transfers& transfers, QWidget* window);

    // Adds the commands to the menu.
    void Fill(QMenu& menu);
    [[nodiscard]] QAction* ReadAction() const { return m_read; }
    [[nodiscard]] QAction* WriteAction() const { return m_write; }
    [[nodiscard]] QAction* ResolveAction() const { return m_resolve; }

    // Connects the keyboard, and offers to resolve an interrupted write to it.
    bool Connect(const setup::KeyboardChoice& choice);
    void ConnectAgain() { Connect(m_workbench.Choice()); }
    // The simulated keyboard that the program was started with, or the user's own.
    void ConnectSimulated();
    // Why the last connection failed; empty when it did not.
    [[nodiscard]] const Failure& FailureToConnect() const { return m_failure; }

signals:
    void Connected();
    void ConnectionFailed(const Failure& why);
    void Reported(const QString& text);

private:
    void ChooseDriver();
    void Resolve();
    void Enable();

    Workbench& m_workbench;
    Transfers& m_transfers;
    QWidget* m_window;
    setup::KeyboardChoice m_startChoice;
    Failure m_failure;
    QAction* m_read = nullptr;
    QAction* m_write = nullptr;
    QAction* m_resolve = nullptr;
};

} // namespace qx::app
