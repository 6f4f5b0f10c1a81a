#include "app/KeyboardState.h"

#include <QTimer>

namespace qx::app {

namespace {

constexpr int kAgain = 100; // milliseconds, while the program works with the keyboard

} // namespace

KeyboardState::KeyboardState(Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    connect(&workbench, &Workbench::KeyboardChanged, this, [this] { TakeHeld(false); });
    connect(&workbench, &Workbench::Held, this, &KeyboardState::TakeHeld);
    connect(&workbench, &Workbench::DocumentChanged, this, &KeyboardState::FindOutSoon);
    connect(&workbench, &Workbench::Ended, this, &KeyboardState::LookAgain);
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
    LookAgain();
}

void KeyboardState::LookAgain() {
    m_looks = true;
    FindOutSoon();
}

void KeyboardState::FindOutSoon() {
    if (!std::exchange(m_isDue, true))
        QMetaObject::invokeMethod(this, &KeyboardState::FindOut, Qt::QueuedConnection);
}

void KeyboardState::FindOut() {
    m_isDue = false;
    if (m_workbench.IsBusy())
        return QTimer::singleShot(kAgain, this, &KeyboardState::FindOutSoon);
    if (std::exchange(m_looks, false))
        m_isInterrupted = HoldsInterrupted();
    m_changes = 0;
    m_kind = !m_workbench.IsConnected() ? Kind::NoKeyboard
             : m_isInterrupted          ? Kind::Interrupted
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

// The keyboard is read only if there are records of interrupted writes.
bool KeyboardState::HoldsInterrupted() const {
    if (!m_workbench.IsConnected())
        return false;
    try {
        return !m_workbench.Interrupted().empty();
    } catch (const host::Error&) {
        return true;
    }
}

} // namespace qx::app
