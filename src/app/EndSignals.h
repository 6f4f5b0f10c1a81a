// EndSignals: while one lives, Ctrl+C, a request to end and the end of the session end the
// application in order: dialogs are left as by Cancel, a write goes on to its proof, the keyboard
// is given back as it was, and unsaved work is kept for the next start. The same signal again ends
// it at once. On Windows it does nothing.
#pragma once

#include <QObject>

#include <functional>

class QSocketNotifier;

namespace qx::app {

class EndSignals : public QObject {
public:
    // `keepUnsaved` keeps unsaved work; the application then ends with 128 and the signal's number.
    explicit EndSignals(std::function<void()> keepUnsaved);
    ~EndSignals() override;

private:
    void End();

    std::function<void()> m_keepUnsaved;
    QSocketNotifier* m_notifier = nullptr;
};

} // namespace qx::app
