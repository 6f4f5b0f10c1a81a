// PreferencesPage: every preference of the user, on a few tabs.
//
// A change is a preference at once, and Changed reports it, so that the host shows its effect; the
// host saves the preferences when it likes. The editors have the preferences' property names as
// object names.
#pragma once

#include "qxcontrols/settings/QXProgSettings.h"

#include <QWidget>

#include <filesystem>
#include <functional>
#include <utility>
#include <vector>

class QFormLayout;
class QSpinBox;
class QTabWidget;
class QVBoxLayout;

namespace qx::app {

class PreferencesPage : public QWidget {
    Q_OBJECT
public:
    // The settings outlive the page. `layouts` is the folder of the keyboard layouts, the shipped
    // ones when it is empty.
    explicit PreferencesPage(QXProgSettings& settings, const std::filesystem::path& layouts = {},
                             QWidget* parent = nullptr);

    // Shows the preferences as they are now.
    void ShowAll();

    // What each preference is called on the page.
    [[nodiscard]] const std::vector<std::pair<Preference, QString>>& Labels() const {
        return m_labels;
    }
    // Opens the tab with the preference, and gives its editor the focus. Nothing happens for one
    // that the page does not have, that is the window's place.
    void Reveal(Preference preference);
    [[nodiscard]] int CurrentTab() const; // the one in front
    void ShowTab(int tab);

signals:
    void Changed(); // by the user

protected:
    void showEvent(QShowEvent* event) override;

private:
    using Choices = std::vector<std::pair<QString, Integer>>;

    [[nodiscard]] QWidget* MakeGeneralTab();
    [[nodiscard]] QWidget* MakeLanguagesTab();
    [[nodiscard]] QWidget* MakeKeyboardTab();
    [[nodiscard]] QWidget* MakeKeyDisplayTab();
    [[nodiscard]] QWidget* MakePosTab();

    // Editors, each in a row of the form.
    void AddCheck(QFormLayout& form, Preference preference, const QString& text);
    void AddChoice(QFormLayout& form, Preference preference, const QString& label,
                   const Choices& choices);
    void AddNumber(QFormLayout& form, Preference preference, const QString& label, int least,
                   int greatest, const QString& unit = {}, QSpinBox* box = nullptr);
    void AddColour(QFormLayout& form, Preference preference, const QString& label);
    void AddColourSet(QFormLayout& form);
    void AddCodePage(QFormLayout& form);
    void AddLastDocument(QFormLayout& form);

    void NoteLabel(Preference preference, const QString& label);
    void ResetToDefaults();
    void Set(Preference preference, const QXProgSettings::Value& value);
    [[nodiscard]] Long Number(Preference preference) const;
    [[nodiscard]] QString Text(Preference preference) const;
    [[nodiscard]] QWidget* Editor(Preference preference) const;

    QXProgSettings& m_settings;
    std::filesystem::path m_layouts;
    QTabWidget* m_tabs = nullptr;
    std::vector<std::function<void()>> m_shows;
    std::vector<std::pair<Preference, QString>> m_labels;
    bool m_isShowing = false;
};

} // namespace qx::app
