// StartStages: the progress of a keyboard's start-up.
#pragma once

#include "qxcontrols/device/QXKeyboardAccess.h"

#include <QObject>

#include <array>
#include <vector>

namespace qx::app {

class StartStages : public QObject {
    Q_OBJECT
public:
    enum class Stage { Driver, Directory, Naming };
    enum class State { Waiting, Running, Done, Failed };

    [[nodiscard]] State Of(Stage stage) const;

    // A start-up begins with the opening of the driver.
    void Begin();
    // Follows the keyboard's own events until Leave, which must be called before the keyboard is
    // destroyed.
    void Follow(QXKeyboardAccess& access);
    void Leave() { m_subscriptions.clear(); }
    // The start-up was aborted: the current stage will not report its end.
    void BreakOff();

signals:
    void Changed();

private:
    void Set(Stage stage, State state);

    std::array<State, 3> m_states = {};
    std::vector<Subscription> m_subscriptions;
};

} // namespace qx::app
