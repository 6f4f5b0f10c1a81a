// EndSignals: while one exists, Ctrl+C, a request to end and the end of the session end the
// application in order: the keyboard is returned to its normal state, and unsaved work is kept for
// the next start.
//
// After a signal, dialogs are cancelled, a write in progress is completed and verified, and the
// application ends with status 128 plus the signal's number; a second signal ends it at once. On
// Windows the end of the user's session is handled; a transfer in progress asks the system to wait.
#pragma once

#include <memory>

namespace qx::app {

class DocumentMenu;
class Workbench;

class EndSignals {
public:
    EndSignals(Workbench& workbench, DocumentMenu& documents);
    ~EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

private:
    class Watch;
    std::unique_ptr<Watch> m_watch;
};

} // namespace qx::app
