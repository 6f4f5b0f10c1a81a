// On Windows a session ends in two steps: every window is asked whether it may end, and then
// notified that it ends. The process may be killed as soon as it has handled the second message, so
// everything necessary is done there. No question is shown meanwhile: nobody would see it.

#include "app/EndSignals.h"

#include "app/DocumentMenu.h"
#include "app/Workbench.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include <windows.h>

namespace qx::app {

class EndSignals::Watch : public QAbstractNativeEventFilter {
public:
    Watch(Workbench& workbench, DocumentMenu& documents)
        : m_workbench(workbench), m_documents(documents) {
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& /*kind*/, void* message, qintptr* result) override {
        const MSG& sent = *static_cast<const MSG*>(message);
        if (sent.message == WM_QUERYENDSESSION) {
            *result = MayEnd(sent.hwnd) ? TRUE : FALSE;
            return true;
        }
        if (sent.message == WM_ENDSESSION) {
            *result = 0;
            if (sent.wParam != FALSE)
                End();
            return true;
        }
        return false;
    }

private:
    // A keyboard being written is not left half-written unless the user insists.
    [[nodiscard]] bool MayEnd(HWND window) {
        ShutdownBlockReasonDestroy(window);
        m_documents.KeepUnsaved();
        if (!m_workbench.IsBusy())
            return true;
        const QString reason =
            QCoreApplication::translate("EndSignals", "Settings are being transferred.");
        ShutdownBlockReasonCreate(window, reason.toStdWString().c_str());
        return false;
    }

    void End() {
        m_documents.KeepUnsaved();
        if (!m_workbench.IsBusy())
            m_workbench.Disconnect();
        QCoreApplication::exit(); // ends all event loops, including those of dialogs
    }

    Workbench& m_workbench;
    DocumentMenu& m_documents;
};

EndSignals::EndSignals(Workbench& workbench, DocumentMenu& documents)
    : m_watch(std::make_unique<Watch>(workbench, documents)) {}

EndSignals::~EndSignals() = default;

} // namespace qx::app
