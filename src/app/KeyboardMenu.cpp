#include "app/KeyboardMenu.h"

#include "app/Failure.h"
#include "app/Paths.h"
#include "app/Working.h"
#include "views/LineIcon.h"

#include <QAction>
#include <QFileDialog>
#include <QMenu>
#include <QWidget>

namespace qx::app {

namespace {

// Whether there is a driver, and no keyboard that answers it.
bool IsNoAnswer(const std::exception& exception) {
    const auto* error = dynamic_cast<const host::Error*>(&exception);
    return error != nullptr &&
           (error->Why() == host::Cause::OpeningFailed || error->Why() == host::Cause::NoDirectory);
}

} // namespace

KeyboardMenu::KeyboardMenu(Workbench& workbench, Transfers& transfers, QWidget* window)
    : QObject(window), m_workbench(workbench), m_transfers(transfers), m_window(window),
      m_startChoice(workbench.Choice()) {
    connect(&workbench, &Workbench::KeyboardChanged, this, &KeyboardMenu::Enable);
}

void KeyboardMenu::Fill(QMenu& menu) {
    m_read = menu.addAction(views::LineIcon(QStringLiteral("read")), tr("&Read from keyboard"),
                            QKeySequence(Qt::CTRL | Qt::Key_R), &m_transfers, &Transfers::Read);
    m_read->setToolTip(tr("Read all settings of the keyboard into the document (Ctrl+R)"));
    m_write = menu.addAction(views::LineIcon(QStringLiteral("write")), tr("&Write to keyboard"),
                             QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_W), &m_transfers,
                             &Transfers::Write);
    m_write->setToolTip(
        tr("Review the document's changes, write them and read them back (Ctrl+Shift+W)"));
    m_resolve = menu.addAction(tr("Resolve &interrupted write…"), this, &KeyboardMenu::Resolve);
    menu.addSeparator();
    menu.addAction(tr("&Connect again"), this, &KeyboardMenu::ConnectAgain);
    menu.addAction(tr("Use a &driver library…"), this, &KeyboardMenu::ChooseDriver);
    menu.addAction(tr("Use the &simulated keyboard"), this, &KeyboardMenu::ConnectSimulated);
    Enable();
}

void KeyboardMenu::Enable() {
    for (QAction* action : {m_read, m_write, m_resolve})
        if (action != nullptr)
            action->setEnabled(m_workbench.IsConnected());
}

bool KeyboardMenu::Connect(const setup::KeyboardChoice& choice) {
    try {
        const Working working(m_workbench, tr("Connecting the keyboard…"));
        m_workbench.Connect(choice);
    } catch (const std::exception& error) {
        m_failure = FailureOf({}, error);
        if (IsNoAnswer(error))
            m_failure.text +=
                QStringLiteral("\n\n") +
                tr("Check that the keyboard is plugged in, that no other program uses it, and "
                   "that the chosen driver library belongs to it.");
        emit ConnectionFailed(m_failure);
        return false;
    }
    m_failure = {};
    emit Connected();
    m_transfers.Recover();
    return true;
}

void KeyboardMenu::ConnectSimulated() {
    setup::KeyboardChoice choice = m_startChoice;
    if (!choice.driver.empty())
        choice = {};
    Connect(choice);
}

void KeyboardMenu::ChooseDriver() {
#ifdef _WIN32
    const QString libraries = tr("Driver libraries (*.dll)");
#else
    const QString libraries = tr("Driver libraries (*.so)");
#endif
    const QString file =
        QFileDialog::getOpenFileName(m_window, tr("Use a driver library"), {}, libraries);
    if (!file.isEmpty())
        Connect({ToPath(file), {}, {}});
}

void KeyboardMenu::Resolve() {
    if (!m_transfers.Recover())
        emit Reported(tr("No write to this keyboard was interrupted."));
}

} // namespace qx::app
