// StateChip: a button with the state of the keyboard, which leads to what can be done about it.
#pragma once

#include "app/KeyboardState.h"

#include <QToolButton>

class QAction;

namespace qx::app {

class StateChip : public QToolButton {
    Q_OBJECT
public:
    struct Actions {
        QAction* write;   // which shows the changes first
        QAction* resolve; // an interrupted write
    };
    StateChip(const KeyboardState& state, const Actions& actions, QWidget* parent = nullptr);

signals:
    void ConnectRequested();

private:
    void ShowState();
    void ShowLooking();
    void Follow();

    const KeyboardState& m_state;
    Actions m_actions;
};

} // namespace qx::app
