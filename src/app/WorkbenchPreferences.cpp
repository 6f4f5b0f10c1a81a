// The Workbench's preferences, and the layout that they choose.
#include "app/Failure.h"
#include "app/Paths.h"
#include "app/Workbench.h"
#include "setup/LayoutSource.h"
#include "views/Bindings.h"

namespace qx::app {

using views::ToQt;

namespace {

constexpr const char* kApplicationPath = R"(Software\Tandor\ConfigurationApp\Application\)";
constexpr const char* kAppearance = "Appearance";
constexpr const char* kColoursFitted = "ColoursFitted"; // to light or dark windows

} // namespace

QString Workbench::PreferencesWarning() const {
    return m_store.IsDamaged() ? tr("The preferences in %1 are damaged: the defaults are used.")
                                     .arg(ToQt(m_store.Location()))
                               : QString();
}

void Workbench::SavePreferences() {
    m_preferences.Save();
    m_preferences.SaveWinPos();
    StorePreferences();
}

Appearance Workbench::Appearance() {
    m_store.SetPath(kApplicationPath);
    switch (m_store.ReadNumber(kAppearance, 0)) {
    case static_cast<Long>(app::Appearance::Light):
        return app::Appearance::Light;
    case static_cast<Long>(app::Appearance::Dark):
        return app::Appearance::Dark;
    default: // another program's
        return app::Appearance::System;
    }
}

void Workbench::SetAppearance(app::Appearance appearance) {
    m_store.SetPath(kApplicationPath);
    m_store.WriteNumber(kAppearance, static_cast<Long>(appearance));
    Quietly([&] { // nobody else fits the keys
        const host::ColourSetId before = FittingColours();
        UseAppearance(appearance);
        FitColours(before);
    });
    SavePreferences();
}

void Workbench::UseStoredAppearance() {
    UseAppearance(Appearance());
    FitColours();
}

bool Workbench::FitColours() {
    m_store.SetPath(kApplicationPath);
    const auto fitting = static_cast<Long>(FittingColours());
    const Long before = m_store.ReadNumber(kColoursFitted, fitting);
    FitColours(static_cast<host::ColourSetId>(before));
    if (before == fitting)
        return false;
    SavePreferences();
    return true;
}

void Workbench::FitColours(host::ColourSetId before) {
    const host::ColourSetId fitting = FittingColours();
    m_store.SetPath(kApplicationPath);
    m_store.WriteNumber(kColoursFitted, static_cast<Long>(fitting));
    if (host::ColoursInUse(m_preferences) == before)
        host::UseColours(m_preferences, fitting);
}

void Workbench::StorePreferences() {
    const std::filesystem::path keptBefore = m_store.DamagedFile();
    try {
        m_store.Flush();
    } catch (const host::Error& error) {
        emit Noticed(FailureOf({}, error).text);
    }
    if (m_store.DamagedFile() != keptBefore)
        emit Noticed(
            tr("The damaged preferences are kept in %1.").arg(ToQt(m_store.DamagedFile())));
}

std::string Workbench::OwnLayout() const {
    return IsConnected() && m_driver.layout ? m_driver.layout() : "";
}

void Workbench::OpenLayout() {
    setup::OpenLayout(m_layout, m_options.layouts,
                      setup::LayoutName(m_options.layout, OwnLayout(),
                                        [this] { return m_preferences.PreferedKeyLang(); }));
    m_layout.SetShowUpcodes(m_preferences.ShowUpcodes());
}

void Workbench::ReloadPreferences() {
    m_writer.reset(); // its configuration has the keys of the layout
    Quietly([this] {
        try {
            OpenLayout();
        } catch (const host::Error& error) {
            emit Noticed(FailureOf({}, error).text);
        }
        m_faces->Apply(m_preferences);
    });
    emit LayoutChanged();
}

} // namespace qx::app
