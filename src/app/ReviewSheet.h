// ReviewSheet: what a write would change in the keyboard, before it is done.
//
// Each change is shown as it is now and as it will be. One click leads to the page of a change, and
// leaves the keyboard as it is.
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

    // The place that the user wants to see instead of writing; empty otherwise.
    [[nodiscard]] const std::string& ChosenPlace() const { return m_place; }

protected:
    void keyPressEvent(QKeyEvent* event) override; // Enter is for the list: a write is meant

private:
    std::string m_place;
};

} // namespace qx::app
