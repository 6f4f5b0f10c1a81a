#include "app/ColourFollower.h"

#include "app/Workbench.h"

#include <QApplication>
#include <QEvent>

namespace qx::app {

ColourFollower::ColourFollower(Workbench& workbench, QObject* parent)
    : QObject(parent), m_workbench(workbench) {
    qApp->installEventFilter(this);
}

// While a dialog is open or the keyboard is read or written, no window can be made again; the
// colours follow when the user comes back to a window.
bool ColourFollower::eventFilter(QObject* watched, QEvent* event) {
    const bool mayTurn =
        (event->type() == QEvent::ApplicationPaletteChange && watched == qApp) ||
        (event->type() == QEvent::WindowActivate && watched == QApplication::activeWindow());
    if (mayTurn && QApplication::activeModalWidget() == nullptr && !m_workbench.IsBusy() &&
        m_workbench.FitColours())
        emit Turned();
    return QObject::eventFilter(watched, event);
}

} // namespace qx::app
