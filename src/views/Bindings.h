// Bindings: keep real widgets equal to the child controls of a headless control.
//
// A view creates its widgets, binds each to the child it shows, and calls ShowAll whenever the
// control raises Refreshed. A change by the user is stored in the child, then the control's action
// for that child is called. Showing never calls an action.
#pragma once

#include "qxcontrols/common/ChildControls.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QObject>
#include <QPushButton>
#include <QSlider>
#include <QString>

#include <functional>
#include <vector>

namespace qx::views {

[[nodiscard]] inline QString ToQt(const std::string& text) {
    return QString::fromStdString(text);
}

// The name of an element of an array of child controls: "cmdEdit_1".
[[nodiscard]] QString ChildName(const char* name, int index);

class Bindings {
public:
    using Action = std::function<void()>;

    // The child outlives the bindings. `name` becomes the widget's object name.
    void Bind(QLabel* widget, const QString& name, const Label& child);
    void Bind(QGroupBox* widget, const QString& name, const Label& child);
    void Bind(QCheckBox* widget, const QString& name, CheckBox& child, const Action& clicked);
    void Bind(QAbstractButton* widget, const QString& name, const Button& child,
              const Action& clicked);
    void Bind(QSlider* widget, const QString& name, Slider& child, const Action& changed);
    void Bind(QListWidget* widget, const QString& name, ListBox& child, const Action& clicked);
    void Bind(QLineEdit* widget, const QString& name, TextBox& child, const Action& changed);

    // Adds an action that runs on every ShowAll.
    void OnShow(const Action& show) { m_shows.push_back(show); }

    // Updates all widgets from their children.
    void ShowAll();

private:
    // Runs the user's action unless the change comes from ShowAll.
    template <typename Store>
    void Act(Store store, const Action& action);

    std::vector<Action> m_shows;
    bool m_isShowing = false;
};

} // namespace qx::views
