#include "app/KeyboardState.h"

namespace qx::app {

KeyboardState::KeyboardState(Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    connect(&workbench, &Workbench::KeyboardChanged, this, [this] { TakeHeld(false); });
    connect(&workbench, &Workbench::Held, this, &KeyboardState::TakeHeld);
    connect(&workbench, &Workbench::DocumentChanged, this, &KeyboardState::FindOutSoon);
    connect(&workbench, &Workbench::Ended, this, &KeyboardState::FindOutSoon);
    FindOut();
}

void KeyboardState::TakeHeld(bool isDocument) {
    if (isDocument) {
        for (host::Section* section : m_workbench.History().Sections())
            if (m_workbench.Has(*section))
                m_held[std::string(section->Info().key)] =
                    m_workbench.Configuration().List({section});
    } else {
        m_held.clear();
    }
    FindOutSoon();
}

void KeyboardState::FindOutSoon() {
    if (!std::exchange(m_isDue, true))
        QMetaObject::invokeMethod(this, &KeyboardState::FindOut, Qt::QueuedConnection);
}

void KeyboardState::FindOut() {
    m_isDue = false;
    m_changes = 0;
    m_kind = !m_workbench.IsConnected() ? Kind::NoKeyboard
             : IsInterrupted()          ? Kind::Interrupted
                                        : Compared();
    emit Changed();
}

KeyboardState::Kind KeyboardState::Compared() {
    for (host::Section* section : m_workbench.History().Sections()) {
        if (!m_workbench.Has(*section))
            continue;
        const auto held = m_held.find(section->Info().key);
        if (held == m_held.end())
            return Kind::Unknown;
        m_changes += static_cast<int>(
            host::Compare(held->second, m_workbench.Configuration().List({section})).size());
    }
    return m_changes == 0 ? Kind::Same : Kind::Differs;
}

bool KeyboardState::IsInterrupted() const {
    try {
        return !m_workbench.Records().journal.Entries().empty();
    } catch (const host::Error&) {
        return false; // shown when something is written
    }
}

} // namespace qx::app
