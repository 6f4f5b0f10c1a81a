#include "app/KeyboardState.h"

#include "app/Places.h"

#include <QTimer>

#include <algorithm>
#include <limits>

namespace qx::app {

namespace {

constexpr int kAgain = 100; // milliseconds, while the program works with the keyboard
constexpr auto kNotCompared = std::numeric_limits<std::size_t>::max(); // no document's revision

// Makes them settings from which this is the difference.
void Apply(const host::Difference& difference, std::vector<host::Setting>& settings) {
    const auto setting = std::ranges::find(settings, difference.place, &host::Setting::place);
    if (setting == settings.end())
        settings.push_back({difference.place, difference.name, difference.from});
    else if (difference.from.kind == host::SettingValue::Kind::None)
        settings.erase(setting);
    else
        setting->value = difference.from;
}

} // namespace

KeyboardState::KeyboardState(Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    connect(&workbench, &Workbench::KeyboardChanged, this, [this] { TakeHeld(false); });
    connect(&workbench, &Workbench::Held, this, &KeyboardState::TakeHeld);
    connect(&workbench, &Workbench::Compared, this, &KeyboardState::TakeCompared);
    connect(&workbench, &Workbench::DocumentChanged, this, &KeyboardState::FindOutSoon);
    connect(&workbench, &Workbench::Ended, this, &KeyboardState::LookAgain);
    FindOut();
}

void KeyboardState::TakeHeld(bool isDocument) {
    m_held.clear();
    if (isDocument)
        for (host::Section* section : m_workbench.History().Sections())
            if (m_workbench.Has(*section))
                m_held[std::string(section->Info().key)] = {
                    m_workbench.Configuration().List({section}),
                    m_workbench.Faces().Of(section->Info().key).GroupedKeys(),
                    m_workbench.History().Revision(*section),
                    {}};
    LookAgain();
}

// A difference does not show which keys were in its block in the keyboard: that stays as it was
// known before.
void KeyboardState::TakeCompared(const std::vector<host::Difference>& differences) {
    std::map<std::string, Held, std::less<>> before = std::move(m_held);
    TakeHeld(true);
    for (auto& [key, held] : m_held) {
        if (const auto known = before.find(key); known != before.end())
            held.groups = std::move(known->second.groups);
        held.revision = kNotCompared;
        for (const host::Difference& difference : differences)
            if (SectionOfPlace(difference.place) == key)
                Apply(difference, held.settings);
    }
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
        Held& known = held->second;
        const std::size_t revision = m_workbench.History().Revision(*section);
        if (std::exchange(known.revision, revision) != revision) {
            known.changes.clear();
            for (const host::Difference& difference :
                 host::Compare(known.settings, m_workbench.Configuration().List({section})))
                known.changes.insert(difference.place);
        }
        m_changes += static_cast<int>(known.changes.size());
    }
    return m_changes == 0 ? Kind::Same : Kind::Differs;
}

const KeyboardState::Held* KeyboardState::HeldOf(std::string_view section) const {
    const auto held = m_held.find(section);
    const bool isCompared =
        (m_kind == Kind::Same || m_kind == Kind::Differs) &&
        m_workbench.History().TakesPart(*m_workbench.Configuration().Find(std::string(section)));
    return isCompared && held != m_held.end() ? &held->second : nullptr;
}

bool KeyboardState::IsChanged(std::string_view section, std::string_view element) const {
    const Held* held = HeldOf(section);
    if (held == nullptr)
        return false;
    const std::string place = "/" + std::string(section) + "/" + std::string(element);
    const auto first = held->changes.lower_bound(place); // a place goes on with '/' or '['
    return first != held->changes.end() && first->starts_with(place);
}

bool KeyboardState::IsKeyChanged(std::string_view section, int key) const {
    const Held* held = HeldOf(section);
    if (held == nullptr)
        return false;
    SectionFace& face = m_workbench.Faces().Of(section);
    const std::string sender = face.SenderOf(key);
    const auto before = held->groups.find(key);
    const bool isMoved = before != held->groups.end() && before->second != sender;
    return isMoved || IsChanged(section, sender);
}

// The keyboard is read only if there are records of interrupted writes.
bool KeyboardState::HoldsInterrupted() {
    if (!m_workbench.IsConnected())
        return false;
    try {
        std::vector<host::DamagedRecord> damaged;
        if (m_workbench.Records().journal.Entries(&damaged).empty() && damaged.empty())
            return false;
        emit Looks();
        return !m_workbench.Interrupted().empty();
    } catch (const host::Error&) {
        return true;
    }
}

} // namespace qx::app
