// PreferencesPage: every preference of the user, on a few tabs.
//
// A change is a preference at once, and Changed reports it, so that the host shows its effect; the
// host saves the preferences when it likes.
#pragma once

#include "app/Appearance.h"
#include "app/PreferenceEditors.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <QWidget>

#include <filesystem>
#include <utility>
#include <vector>

class QComboBox;
class QLabel;
class QTabWidget;

namespace qx::app {

class PreferencesPage : public QWidget {
    Q_OBJECT
public:
    // The settings outlive the page. `layouts` is the folder of the keyboard layouts, the shipped
    // ones when it is empty.
    explicit PreferencesPage(QXProgSettings& settings, const std::filesystem::path& layouts = {},
                             QWidget* parent = nullptr);

    // Shows the preferences as they are now.
    void ShowAll() { m_editors->ShowAll(); }
    void ShowAppearance(Appearance appearance);
    // That of the connected keyboard, which counts more than the preference; empty for none.
    void ShowOwnLayout(const QString& name);

    // The label of each preference on the page.
    [[nodiscard]] const std::vector<std::pair<Preference, QString>>& Labels() const {
        return m_editors->Labels();
    }
    // Opens the tab with the preference, and gives its editor the focus. Preferences that are not
    // on the page are ignored.
    void Reveal(Preference preference);
    [[nodiscard]] int CurrentTab() const; // the one in front
    void ShowTab(int tab);

signals:
    void Changed(); // by the user
    void AppearanceChosen(app::Appearance appearance);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* MakeGeneralTab();
    [[nodiscard]] QWidget* MakeLanguagesTab();
    [[nodiscard]] QWidget* MakeKeyboardTab();
    [[nodiscard]] QWidget* MakeKeyDisplayTab();
    [[nodiscard]] QWidget* MakePosTab();

    void ResetToDefaults();

    QXProgSettings& m_settings;
    std::filesystem::path m_layouts;
    PreferenceEditors* m_editors;
    QTabWidget* m_tabs = nullptr;
    QComboBox* m_appearance = nullptr;
    QLabel* m_ownLayout;
};

} // namespace qx::app
