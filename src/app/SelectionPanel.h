// SelectionPanel: beside the keys while several are selected: what can be done with all of them.
#pragma once

#include <QWidget>

#include <vector>

class QAction;
class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QSpinBox;

namespace qx::views {
class FaultLabel;
class KeyGrid;
} // namespace qx::views

namespace qx::app {

class KeyActions;

// Buttons for the actions, with their texts and icons, in as many lines as they need.
[[nodiscard]] QLayout* ButtonRow(const std::vector<QAction*>& actions);

class SelectionPanel : public QWidget {
    Q_OBJECT
public:
    // Both outlive this object.
    SelectionPanel(KeyActions& actions, const views::KeyGrid& grid);

    void FocusSeries();

private:
    [[nodiscard]] QWidget* MakeSeries();
    void ShowSelection();
    void Fill();

    KeyActions& m_actions;
    const views::KeyGrid& m_grid;
    QLabel* m_title;
    QLineEdit* m_text;
    QSpinBox* m_first;
    QSpinBox* m_digits;
    QCheckBox* m_enter;
    QLabel* m_preview;
    views::FaultLabel* m_fault;
    QPushButton* m_fill;
};

} // namespace qx::app
