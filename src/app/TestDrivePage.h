// TestDrivePage: tries out the simulated keyboard: shows the PC's input when a key is pressed, a
// card is swiped or a code is scanned, according to the settings in the keyboard's memory.
#pragma once

#include "app/Workbench.h"
#include "simulator/Reception.h"
#include "simulator/TestDrive.h"
#include "views/KeyGrid.h"

#include <QWidget>

#include <array>
#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QSpinBox;
class QTabWidget;

namespace qx::app {

class TestDrivePage : public QWidget {
    Q_OBJECT
public:
    explicit TestDrivePage(Workbench& workbench, QWidget* parent = nullptr);

private:
    using Trial = std::function<sim::Reception(const sim::TestDrive& drive)>;

    [[nodiscard]] QWidget* MakeKeysTab();
    [[nodiscard]] QWidget* MakeFunctionKeysTab();
    [[nodiscard]] QWidget* MakeCardTab();
    [[nodiscard]] QWidget* MakeCodeTab();
    void ShowKeyboard();
    void Try(const QString& what, const Trial& trial);
    [[nodiscard]] QString TextOf(const sim::Reception& reception) const;

    Workbench& m_workbench;
    QLabel* m_hint;
    QTabWidget* m_tabs;
    views::KeyGrid* m_keys;
    std::array<QLineEdit*, 4> m_tracks;
    QPlainTextEdit* m_received;
};

} // namespace qx::app
