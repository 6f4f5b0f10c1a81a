// ReviewSheet: the changes that a write will make in the keyboard, shown before it starts.
//
// Each change is shown with its old and new value. A click leads to the page of a change, without
// writing to the keyboard.
#pragma once

#include "host/WritePlan.h"

#include <QDialog>

#include <string>

namespace qx::app {

class ReviewSheet : public QDialog {
    Q_OBJECT
public:
    ReviewSheet(const host::WritePlan& plan, const QString& title, const QString& keyboardName,
                const QString& absentSections, QWidget* parent = nullptr);

    // The place the user wants to see instead of writing; otherwise empty.
    [[nodiscard]] const std::string& ChosenPlace() const { return m_place; }

protected:
    void keyPressEvent(QKeyEvent* event) override; // Enter belongs to the list, not to Write

private:
    std::string m_place;
};

} // namespace qx::app
