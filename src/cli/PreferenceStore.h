// PreferenceStore: the user's stored preferences.
#pragma once

#include "cli/Context.h"
#include "host/SettingsStore.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::cli {

class PreferenceStore {
public:
    // Loads the preferences from the place in the options, and warns about a damaged store. Throws
    // host::Error, also if the place is a keyboard's file.
    explicit PreferenceStore(Context& context);

    [[nodiscard]] QXProgSettings& Settings() { return m_settings; }

    // Stores all preferences, and warns if a damaged store was renamed. Throws host::Error.
    void Save();

private:
    Context& m_context;
    host::SettingsStore m_store;
    QXProgSettings m_settings;
};

} // namespace qx::cli
