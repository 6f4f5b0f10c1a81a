// SelectionPanel: beside the keys while several are selected: what can be done with all of them.
#pragma once

#include <QWidget>

#include <vector>

class QAction;
class QBoxLayout;
class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QToolButton;

namespace qx::views {
class FaultLabel;
class KeyGrid;
} // namespace qx::views

namespace qx::app {

class KeyActions;

// A button with the action's text and icon.
[[nodiscard]] QToolButton* ActionButton(QAction* action, const QString& name);

class SelectionPanel : public QWidget {
    Q_OBJECT
public:
    // Both outlive this object.
    SelectionPanel(KeyActions& actions, const views::KeyGrid& grid);

    void FocusSeries();
    // Side by side: what can be done, and the parts of the series.
    void SetWide(bool isWide);

private:
    [[nodiscard]] QWidget* MakeSeries();
    void ShowSelection();
    void Fill();

    KeyActions& m_actions;
    const views::KeyGrid& m_grid;
    QBoxLayout* m_column;
    QBoxLayout* m_series;
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
