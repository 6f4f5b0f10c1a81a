// OverviewPage: the home page: the connected keyboard with what can be done with it, its picture, a
// card for each of its modules, and the technical details of the connection, folded away.
#pragma once

#include "app/Failure.h"
#include "app/Workbench.h"

#include <QWidget>

class QAction;
class QFormLayout;
class QLabel;
class QTableWidget;
class QToolButton;

namespace qx::app {

class KeyboardPicture;
class KeyboardState;
class ModuleCards;

class OverviewPage : public QWidget {
    Q_OBJECT
public:
    // Buttons for these commands with the keyboard; they outlive the page.
    struct Commands {
        QAction* read;
        QAction* write;
        QAction* resolve;
    };
    OverviewPage(Workbench& workbench, const KeyboardState& state, const Commands& commands,
                 QWidget* parent = nullptr);

    // Shows why the keyboard is not connected, and what to check.
    void ShowFailure(const Failure& reason);

signals:
    void ConnectAgainRequested();
    void SimulatedKeyboardRequested();
    void PageRequested(const QString& id); // of a section
    void PlaceChosen(const std::string& place);

protected:
    bool event(QEvent* event) override;

private:
    [[nodiscard]] QWidget* MakeKeyboard(const Commands& commands);
    [[nodiscard]] QWidget* MakeStages();
    [[nodiscard]] QWidget* MakeDetails();
    void ShowStages();
    void ShowKeyboard();
    void ShowDetails();
    void ShowInterrupted();
    void FoldDetails(bool isFolded);

    Workbench& m_workbench;
    const KeyboardState& m_state;
    QLabel* m_name;
    QLabel* m_kind;
    QWidget* m_buttons;     // shown while a keyboard is connected
    QWidget* m_interrupted; // shown while a write to this keyboard is interrupted
    QWidget* m_startUp;     // shown while none is connected
    static constexpr int kStages = 3;
    QLabel* m_marks[kStages];
    QLabel* m_stages[kStages];
    QLabel* m_failure;
    QWidget* m_remedies;
    KeyboardPicture* m_picture; // of the connected one
    ModuleCards* m_cards;
    QToolButton* m_fold;
    QWidget* m_details;
    QFormLayout* m_identity;
    QTableWidget* m_directory;
};

} // namespace qx::app
