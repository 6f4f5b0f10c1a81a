// ReviewSheet: the changes that a write will make in the keyboard, shown before it starts.
//
// Each change is shown with its old and new value. A click leads to the page of a change, or of a
// sequence that a warning is about, without writing to the keyboard. The identifier and the number
// of bytes are technical details, which are folded away.
#pragma once

#include "host/WritePlan.h"

#include <QDialog>
#include <QString>

#include <string>
#include <vector>

namespace qx::app {

class ReviewSheet : public QDialog {
    Q_OBJECT
public:
    // Beside the changes.
    struct Remarks {
        QString absentSections; // which the keyboard lacks; may be empty
        struct Warning {
            std::string place;
            QString text;
        };
        std::vector<Warning> warnings; // about sequences
    };
    ReviewSheet(const host::WritePlan& plan, const QString& title, const QString& keyboardName,
                const Remarks& remarks, QWidget* parent = nullptr);

    // The place to show if the user chose to see a setting instead of writing; otherwise empty.
    [[nodiscard]] const std::string& ChosenPlace() const { return m_place; }

protected:
    void keyPressEvent(QKeyEvent* event) override; // Enter belongs to the list, not to Write

private:
    [[nodiscard]] QWidget* MakeChanges(const host::WritePlan& plan);
    [[nodiscard]] QWidget* MakeWarnings(const std::vector<Remarks::Warning>& warnings);
    [[nodiscard]] QWidget* MakeDetails(const host::WritePlan& plan);
    void Choose(const std::string& place);

    std::string m_place;
};

} // namespace qx::app
