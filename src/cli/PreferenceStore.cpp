#include "cli/PreferenceStore.h"

#include "cli/Output.h"
#include "files/SystemTexts.h"

namespace qx::cli {

namespace {

const std::filesystem::path& FileOf(const Context& context) {
    RefuseKeyboardFile(files::TextOf(context.options.settings));
    return context.options.settings;
}

} // namespace

PreferenceStore::PreferenceStore(Context& context)
    : m_context(context), m_store(FileOf(context)), m_settings(m_store) {
    if (m_store.IsDamaged())
        context.Warn("the preferences in " + m_store.Location() +
                     " are damaged: the defaults are used");
    m_settings.Load();
}

void PreferenceStore::Save() {
    m_settings.Save();
    m_settings.SaveWinPos();
    m_store.Flush();
    if (!m_store.DamagedFile().empty())
        m_context.Warn("the damaged preferences are kept in " +
                       files::TextOf(m_store.DamagedFile()));
}

} // namespace qx::cli
