#include "cli/PreferenceStore.h"

namespace qx::cli {

PreferenceStore::PreferenceStore(Context& context)
    : m_store(context.options.settings), m_settings(m_store) {
    if (!m_store.DamagedFile().empty())
        context.Note("the preferences were damaged; the file is kept as " +
                     m_store.DamagedFile().string() + ", and the defaults hold");
    m_settings.Load();
}

void PreferenceStore::Save() {
    m_settings.Save();
    m_settings.SaveWinPos();
    m_store.Flush();
}

} // namespace qx::cli
