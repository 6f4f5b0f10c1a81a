// ControlDisplay: how the controls show themselves, apart from their settings: which tracks are
// listed, whether released keys are shown, and which layer the keyboard's own keys have.
//
// Nothing here is an edit; the caller keeps what it does apart from those.
#pragma once

#include "host/Configuration.h"
#include "host/Session.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::app {

class ControlDisplay {
public:
    // Both outlive it. No keyboard is there at first.
    ControlDisplay(host::Configuration& configuration, const QXProgSettings& preferences);

    // The controls ask this keyboard what it has, and follow it.
    void Follow(host::Session& keyboard);
    // No keyboard limits what a document can be given.
    void FollowNone();
    // Shows everything by the preferences as they are now.
    void ApplyPreferences();

private:
    template <typename Control>
    [[nodiscard]] Control& ControlOf(const char* sectionKey) {
        return dynamic_cast<Control&>(m_configuration.Find(sectionKey)->Control());
    }
    void ListTracks();
    void ShowReleases();
    void ShowLayerOnKeyboard();

    host::Configuration& m_configuration;
    const QXProgSettings& m_preferences;
    Subscription m_layer;
    Integer m_shownLayer = 0;
    bool m_showsReleases = false;
};

} // namespace qx::app
