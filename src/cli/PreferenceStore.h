// PreferenceStore: the user's preferences, as they are stored.
#pragma once

#include "cli/Context.h"
#include "host/SettingsStore.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::cli {

class PreferenceStore {
public:
    // Loads the preferences from where the options say. A damaged store is set aside, with a note.
    explicit PreferenceStore(Context& context);

    [[nodiscard]] QXProgSettings& Settings() { return m_settings; }

    // Stores all preferences. Throws host::Error.
    void Save();

private:
    host::SettingsStore m_store;
    QXProgSettings m_settings;
};

} // namespace qx::cli
