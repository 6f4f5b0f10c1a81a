// TestDrivePage: shows the PC's input when a key is pressed, a card is swiped or a code is scanned,
// according to the document or to the keyboard's memory. A log lists everything tried.
#pragma once

#include "app/TestedKeyboard.h"
#include "app/Workbench.h"
#include "simulator/Reception.h"
#include "views/KeyGrid.h"

#include <QWidget>

#include <array>
#include <functional>

class QLabel;
class QLayout;
class QLineEdit;
class QPlainTextEdit;
class QTabBar;
class QTabWidget;

namespace qx::app {

class TestDrivePage : public QWidget {
    Q_OBJECT
public:
    explicit TestDrivePage(Workbench& workbench, QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    using Trial = std::function<sim::Reception(const sim::TestDrive& drive)>;

    [[nodiscard]] QLayout* MakeSources();
    [[nodiscard]] QWidget* MakeKeysTab();
    [[nodiscard]] QWidget* MakeFunctionKeysTab();
    [[nodiscard]] QWidget* MakeCardTab();
    [[nodiscard]] QWidget* MakeCodeTab();
    [[nodiscard]] QLayout* MakeLogRow();
    void ShowKeyboard();
    void ShowKeys(const sim::TestDrive& drive);
    void ShowFunctionKeys(const sim::TestDrive& drive);
    // With the copy of the keyboard; an error is shown in place of the hint.
    void WithDrive(const std::function<void(const sim::TestDrive& drive)>& use);
    void Try(const QString& what, const Trial& trial);
    [[nodiscard]] QString TextOf(const sim::Reception& reception) const;

    Workbench& m_workbench;
    TestedKeyboard m_keyboard;
    QLabel* m_hint;
    QWidget* m_sources;
    QTabWidget* m_tabs;
    views::KeyGrid* m_keys;
    QTabBar* m_layers;
    views::KeyGrid* m_functionKeys;
    std::array<QLineEdit*, 4> m_tracks;
    QPlainTextEdit* m_received;
};

} // namespace qx::app
