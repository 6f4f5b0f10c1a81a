// StartWizard: asks how to begin when the program starts.
#pragma once

#include "qxcontrols/settings/QXProgSettings.h"

#include <QDialog>

#include <optional>

class QPushButton;

namespace qx::app {

// The values of the preference ShowStartupAction.
enum class StartChoice : Integer { ReadKeyboard = 0, LastDocument = 1, Defaults = 2 };

// How the preferences have the program begin; nothing when it asks.
[[nodiscard]] std::optional<StartChoice> StoredStart(const QXProgSettings& settings);
void StoreStart(QXProgSettings& settings, std::optional<StartChoice> choice);

class StartWizard : public QDialog {
    Q_OBJECT
public:
    // Preselects the previous choice if possible: a keyboard that is not connected cannot be read.
    // The user's choice, and whether to show the wizard again, are stored in the preferences at
    // once.
    StartWizard(QXProgSettings& settings, bool isConnected, QWidget* parent = nullptr);

    // The user's choice once the dialog is accepted; before that, the preselected one.
    [[nodiscard]] StartChoice Choice() const { return m_choice; }

private:
    QPushButton* AddChoice(StartChoice choice, const char* name, const QString& title,
                           const QString& description);

    QXProgSettings& m_settings;
    StartChoice m_choice = StartChoice::ReadKeyboard;
};

} // namespace qx::app
