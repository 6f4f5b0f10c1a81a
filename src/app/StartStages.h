// StartStages: how far the start-up of a keyboard has come.
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

    // A start-up begins, with the opening of the driver.
    void Begin();
    // Follows the keyboard's own reports, until Leave, which comes before the keyboard goes.
    void Follow(QXKeyboardAccess& access);
    void Leave() { m_subscriptions.clear(); }
    // The start-up was broken off: a stage that is running reports no end of its own.
    void BreakOff();

signals:
    void Changed();

private:
    void Set(Stage stage, State state);

    std::array<State, 3> m_states = {};
    std::vector<Subscription> m_subscriptions;
};

} // namespace qx::app
