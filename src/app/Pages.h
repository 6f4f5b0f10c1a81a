// Pages: the pages of the main window, one of which is shown beside the list.
#pragma once

#include <QString>
#include <QWidget>

#include <memory>
#include <string>
#include <vector>

class QLabel;
class QPushButton;

namespace qx::views {
class SequenceInspector;
}

namespace qx::app {

class KeyMarks;
class EditRequests;
class InPlaceEditor;
class KeyActions;
class KeyEdits;
class KeyboardState;
class Workbench;

// A page is as small as its parts can be before it scrolls, also one with text in several lines.
class Page : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;
    [[nodiscard]] int heightForWidth(int width) const override;
};

// A module's page: its title, a line if the keyboard or the document lacks it, and the view of its
// control.
class ModulePage : public Page {
    Q_OBJECT
public:
    // Of the section with this key.
    ModulePage(Workbench& workbench, EditRequests& edits, const KeyboardState& state,
               std::string sectionKey, QWidget* parent = nullptr);
    ~ModulePage() override;

protected:
    void keyPressEvent(QKeyEvent* event) override; // text for the inspector

private:
    // Beside the view: what the selected keys send, and what can be done with them.
    [[nodiscard]] QWidget* WithKeyEditors(EditRequests& edits, const KeyboardState& state);
    // Beside the view, or the tabs of it that have sequences: the prefix or suffix that is chosen.
    [[nodiscard]] QWidget* WithReaderEditors();
    [[nodiscard]] QWidget* WithReaderEditor(QWidget* view);
    void ShowState();

    Workbench& m_workbench;
    std::string m_sectionKey;
    QLabel* m_state;
    QWidget* m_view;
    // Where keys are edited in place.
    std::unique_ptr<KeyEdits> m_edits;
    std::unique_ptr<KeyActions> m_actions;
    std::unique_ptr<InPlaceEditor> m_editor;
    std::unique_ptr<KeyMarks> m_marks;
    std::vector<views::SequenceInspector*> m_inspectors;
};

// Any other page with a title.
[[nodiscard]] QWidget* TitledPage(const QString& title, QWidget* content);

} // namespace qx::app
