#include "app/sections/SectionFaces.h"

#include "app/sections/Entries.h"
#include "host/Session.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <algorithm>
#include <utility>

namespace qx::app {

SectionFaces::SectionFaces(host::Configuration& configuration) : m_configuration(configuration) {
    for (const SectionEntry* entry : kSectionEntries)
        m_faces.push_back({entry->key, entry->makeFace(configuration.Find(entry->key)->Control())});
    FollowNone();
}

SectionFace& SectionFaces::Of(std::string_view key) const {
    return *std::find_if(m_faces.begin(), m_faces.end(), [&](const Named& each) {
                return each.key == key;
            })->face;
}

void SectionFaces::Translate() {
    for (const Named& each : m_faces) {
        each.face->NameOptions(m_configuration.Captions());
        each.face->Translate();
    }
    for (const auto& section : m_configuration.Sections()) {
        section->Control().Translate();
        section->Control().AdjustControls();
    }
}

void SectionFaces::AnswerWith(EditRequests& edits) {
    for (const Named& each : m_faces)
        each.face->AnswerWith(edits);
}

void SectionFaces::Follow(host::Session& keyboard) {
    for (host::Section* section : keyboard.Present(m_configuration, true))
        section->Control().SetKeyboard(&keyboard.Access());
    for (const Named& each : m_faces)
        each.face->Follow(&keyboard);
}

void SectionFaces::FollowNone() {
    for (const auto& section : m_configuration.Sections())
        section->Control().SetKeyboard(nullptr);
    for (const Named& each : m_faces)
        each.face->Follow(nullptr);
}

// Applies the preference for released keys to all pages, until the user changes it on a page.
void SectionFaces::Apply(const QXProgSettings& preferences) {
    const bool showsReleases = preferences.ShowUpcodes();
    const bool isChanged = std::exchange(m_showsReleases, showsReleases) != showsReleases;
    for (const Named& each : m_faces) {
        if (isChanged)
            each.face->ShowReleases(showsReleases);
        each.face->Apply(preferences);
    }
    for (const auto& section : m_configuration.Sections()) {
        section->Control().ReloadKeySettings();
        section->Control().ReloadColor();
    }
}

} // namespace qx::app
