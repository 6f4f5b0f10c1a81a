#include "app/StartStages.h"

namespace qx::app {

StartStages::State StartStages::Of(Stage stage) const {
    return m_states[static_cast<std::size_t>(stage)];
}

void StartStages::Set(Stage stage, State state) {
    m_states[static_cast<std::size_t>(stage)] = state;
    emit Changed();
}

void StartStages::Begin() {
    m_states.fill(State::Waiting);
    Set(Stage::Driver, State::Running);
}

void StartStages::Follow(QXKeyboardAccess& access) {
    const auto on = [this](auto& event, Stage stage, State state) {
        m_subscriptions.push_back(
            event.Subscribe([this, stage, state](auto&&...) { Set(stage, state); }));
    };
    on(access.InitDriver, Stage::Driver, State::Running);
    on(access.InitDriverOK, Stage::Driver, State::Done);
    on(access.InitDriverFailed, Stage::Driver, State::Failed);
    on(access.InitConfigurationTable, Stage::Directory, State::Running);
    on(access.InitConfigurationTableOK, Stage::Directory, State::Done);
    on(access.InitConfigurationTableFailed, Stage::Directory, State::Failed);
    on(access.InitKeyboardNaming, Stage::Naming, State::Running);
    on(access.InitKeyboardNamingOK, Stage::Naming, State::Done);
    on(access.InitKeyboardNamingFailed, Stage::Naming, State::Failed);
}

void StartStages::BreakOff() {
    for (const Stage stage : {Stage::Driver, Stage::Directory, Stage::Naming})
        if (Of(stage) == State::Running)
            Set(stage, State::Failed);
}

} // namespace qx::app
