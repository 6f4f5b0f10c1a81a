#include "app/EndSignals.h"

#include "app/DocumentMenu.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

// A signal handler can do little more than write to a pipe, which the event loop reads.
int thePipe[2] = {-1, -1};

} // namespace

extern "C" void QxConfiguratorOnSignal(int signal) {
    const auto number = static_cast<unsigned char>(signal);
    static_cast<void>(!write(thePipe[1], &number, 1));
    (void)std::signal(signal, SIG_DFL);
}

namespace qx::app {

class EndSignals::Watch : public QObject {
public:
    explicit Watch(DocumentMenu& documents);
    ~Watch() override;

private:
    void End();

    DocumentMenu& m_documents;
    QSocketNotifier* m_notifier = nullptr;
};

EndSignals::Watch::Watch(DocumentMenu& documents) : m_documents(documents) {
    if (pipe2(thePipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // signals end the application as before
    m_notifier = new QSocketNotifier(thePipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &Watch::End);
    for (const int signal : kSignals)
        if (std::signal(signal, QxConfiguratorOnSignal) == SIG_IGN)
            (void)std::signal(signal, SIG_IGN); // as when the application was started
}

EndSignals::Watch::~Watch() {
    if (m_notifier == nullptr)
        return;
    for (const int signal : kSignals)
        (void)std::signal(signal, SIG_DFL);
    for (int& end : thePipe)
        close(std::exchange(end, -1));
}

void EndSignals::Watch::End() {
    unsigned char signal = 0;
    if (read(thePipe[0], &signal, 1) != 1)
        return;
    constexpr int kEndedBySignal = 128;
    m_documents.KeepUnsaved();
    QCoreApplication::exit(kEndedBySignal + signal); // all event loops, those of dialogs too
}

EndSignals::EndSignals(Workbench& /*workbench*/, DocumentMenu& documents)
    : m_watch(std::make_unique<Watch>(documents)) {}

EndSignals::~EndSignals() = default;

} // namespace qx::app
