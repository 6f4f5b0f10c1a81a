// EndSignals: while one lives, Ctrl+C, a request to end and the end of the session end the
// application in order: the keyboard is given back as it was, and unsaved work is kept for the next
// start.
//
// By a signal, dialogs are left as by Cancel, a write goes on to its proof, and the application
// ends with 128 and the signal's number; the same signal again ends it at once. On Windows it is
// the end of the user's session that counts; a transfer that is under way asks the system to wait.
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
