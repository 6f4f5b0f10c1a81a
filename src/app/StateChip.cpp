#include "app/StateChip.h"

#include "views/LineIcon.h"

#include <QAction>

namespace qx::app {

using Kind = KeyboardState::Kind;

StateChip::StateChip(const KeyboardState& state, const Actions& actions, QWidget* parent)
    : QToolButton(parent), m_state(state), m_actions(actions) {
    setObjectName(QStringLiteral("stateChip"));
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setFocusPolicy(Qt::TabFocus);
    setAutoRaise(true);
    setIconSize(iconSize() + QSize(6, 0)); // the text keeps its distance
    connect(&state, &KeyboardState::Changed, this, &StateChip::ShowState);
    connect(&state, &KeyboardState::Looks, this, &StateChip::ShowLooking);
    connect(this, &QToolButton::clicked, this, &StateChip::Follow);
    ShowState();
}

void StateChip::ShowState() {
    const auto show = [this](const char* icon, const QString& text, const QString& toolTip) {
        setIcon(views::LineIcon(QString::fromLatin1(icon)));
        setText(text);
        setToolTip(toolTip);
        setAccessibleDescription(toolTip);
    };
    switch (m_state.Now()) {
    case Kind::NoKeyboard:
        return show("no-keyboard", tr("No keyboard"), tr("Connect the keyboard"));
    case Kind::Interrupted:
        return show("warning", tr("Interrupted write: resolve…"),
                    tr("A write to this keyboard was interrupted: finish it or roll it back"));
    case Kind::Unknown:
        return show("keyboard", tr("Not compared with the keyboard"),
                    tr("Show the changes that writing would make in the keyboard"));
    case Kind::Same:
        return show("done", tr("In sync"),
                    tr("The keyboard holds all settings of the document for which it has modules"));
    case Kind::Differs:
        return show("changed", tr("%n change(s) not in the keyboard", nullptr, m_state.Changes()),
                    tr("Show the changes before they are written"));
    }
}

// The driver blocks the event loop for a while. Input meanwhile is kept: the user did not start
// this, and may be closing a dialog.
void StateChip::ShowLooking() {
    setText(tr("Looking for an interrupted write…"));
    setToolTip({});
    setAccessibleDescription({});
    resize(sizeHint());
    raise();
    repaint();
}

void StateChip::Follow() {
    switch (m_state.Now()) {
    case Kind::NoKeyboard:
        emit ConnectRequested();
        break;
    case Kind::Interrupted:
        m_actions.resolve->trigger();
        break;
    case Kind::Unknown:
    case Kind::Same:
    case Kind::Differs:
        m_actions.write->trigger();
        break;
    }
}

} // namespace qx::app
