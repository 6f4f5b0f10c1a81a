// StartWizard: asks what to begin with when the program starts.
#pragma once

#include "qxcontrols/settings/QXProgSettings.h"

#include <QDialog>

class QPushButton;

namespace qx::app {

// The numbers are those of the preference ShowStartupAction.
enum class StartChoice : Integer { ReadKeyboard = 0, LastDocument = 1, Defaults = 2 };

class StartWizard : public QDialog {
    Q_OBJECT
public:
    // Offers first what was chosen the last time, where that is possible: a keyboard that is not
    // connected cannot be read. What the user chooses, and whether the wizard is to be shown again,
    // becomes a preference at once.
    StartWizard(QXProgSettings& settings, bool isConnected, QWidget* parent = nullptr);

    // What the user has chosen, once the dialog is accepted; until then what is offered first.
    [[nodiscard]] StartChoice Choice() const { return m_choice; }

private:
    QPushButton* AddChoice(StartChoice choice, const char* name, const QString& title,
                           const QString& description);

    QXProgSettings& m_settings;
    StartChoice m_choice = StartChoice::ReadKeyboard;
};

} // namespace qx::app
