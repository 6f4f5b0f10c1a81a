// PreferenceStore: the user's preferences, as they are stored.
#pragma once

#include "cli/Context.h"
#include "host/SettingsStore.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::cli {

class PreferenceStore {
public:
    // Loads the preferences from where the options say, and warns of a damaged store. Throws
    // host::Error, also where that is the file of a keyboard.
    explicit PreferenceStore(Context& context);

    [[nodiscard]] QXProgSettings& Settings() { return m_settings; }

    // Stores all preferences, and warns where a damaged store was set aside. Throws host::Error.
    void Save();

private:
    Context& m_context;
    host::SettingsStore m_store;
    QXProgSettings m_settings;
};

} // namespace qx::cli
