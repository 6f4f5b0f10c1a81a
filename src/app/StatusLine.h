// StatusLine: the connected keyboard, the progress of a transfer, and the time of the last
// automatic save.
#pragma once

#include "app/Workbench.h"

#include <QStatusBar>

class QLabel;

namespace qx::app {

class StatusLine : public QStatusBar {
    Q_OBJECT
public:
    explicit StatusLine(Workbench& workbench, QWidget* parent = nullptr);

    void ShowBriefly(const QString& text);

private:
    void ShowKeyboard();
    [[nodiscard]] QString FirmwareFault() const; // empty if there is none

    Workbench& m_workbench;
    QLabel* m_keyboard;
    QLabel* m_brief;
};

} // namespace qx::app
