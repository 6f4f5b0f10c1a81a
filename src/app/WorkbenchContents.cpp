// The Workbench's names for options, and what it compares and tries out without changing anything.
#include "app/Failure.h"
#include "app/Workbench.h"
#include "host/CopiedKeyboard.h"
#include "host/WritePlan.h"
#include "setup/CaptionSource.h"

#include <iterator>

namespace qx::app {

void Workbench::NameOptions() {
    std::vector<host::Error> warnings;
    const auto keyboard =
        IsConnected() ? m_session->Keyboard() : host::KeyboardInfo::In(m_keyboardNote.get());
    m_configuration->SetCaptions(setup::CaptionsFor(keyboard, m_options.records, warnings));
    for (const host::Error& warning : warnings)
        emit Noticed(WarningText(warning));
    Quietly([this] { m_faces->Translate(); });
}

std::unique_ptr<host::Configuration> Workbench::NewConfiguration(host::LayoutUse use) {
    auto configuration = std::make_unique<host::Configuration>(m_platform, &m_layout, nullptr, use);
    configuration->SetCaptions(m_configuration->Captions());
    return configuration;
}

host::KeyboardContent Workbench::HeldContent() {
    host::KeyboardContent held;
    Quietly([&] { held = Writer().Read(); });
    return held;
}

host::KeyboardContent Workbench::DocumentContent(const host::KeyboardContent& held) {
    host::KeyboardContent content;
    Quietly([&] {
        content = Writer()
                      .PlannerFor(held)
                      .ForSettings(WantedSections(), {.full = false, .repair = true})
                      .after;
    });
    return content;
}

std::unique_ptr<host::Configuration> Workbench::SettingsIn(const host::KeyboardContent& content) {
    std::unique_ptr<host::Configuration> settings;
    Quietly([&] {
        settings = NewConfiguration();
        host::CopiedKeyboard copy(content);
        host::Session session(copy);
        session.Open();
        std::vector<host::Section*> sections = session.Present(*settings);
        session.Upload(sections);
    });
    return settings;
}

std::vector<host::Difference> Workbench::ChangesBy(const host::ConfigurationDocument& other) {
    const auto theirs = NewConfiguration(host::LayoutUse::Captions);
    std::vector<host::Setting> now;
    std::vector<host::Setting> then;
    for (const host::Section* section : theirs->Read(other)) {
        host::Section* own = m_configuration->Find(section->Info().key);
        const auto add = [](std::vector<host::Setting>& all, std::vector<host::Setting> more) {
            all.insert(all.end(), std::make_move_iterator(more.begin()),
                       std::make_move_iterator(more.end()));
        };
        if (!m_history->TakesPart(*own))
            continue;
        add(now, m_configuration->List({own}));
        add(then, theirs->List({theirs->Find(section->Info().key)}));
    }
    return Compare(now, then);
}

} // namespace qx::app
