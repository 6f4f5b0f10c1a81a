#include "cli/InterruptWatch.h"

#include <atomic>
#include <csignal>
#include <ctime>

#include <unistd.h>

namespace qx::cli {

namespace {

constexpr std::time_t kPatience = 2; // seconds

std::atomic<int> firstSignal = 0;
std::atomic<std::time_t> firstTime = 0;
static_assert(std::atomic<int>::is_always_lock_free &&
              std::atomic<std::time_t>::is_always_lock_free);

constexpr int kSignals[] = {SIGINT, SIGTERM, SIGHUP};

void ShowNotice() {
    constexpr char kText[] = "\nqxconf: finishing the current operation; repeat after two "
                             "seconds to end at once\n";
    if (isatty(STDERR_FILENO) != 0)
        static_cast<void>(!write(STDERR_FILENO, kText, sizeof kText - 1));
}

} // namespace

// Calls only functions that are allowed in a signal handler.
extern "C" void QxconfOnSignal(int signal) {
    const std::time_t now = std::time(nullptr);
    if (firstSignal == 0) {
        firstSignal = signal;
        firstTime = now;
        ShowNotice();
    } else if (now - firstTime >= kPatience) {
        (void)std::signal(signal, SIG_DFL);
        (void)std::raise(signal);
    }
}

struct InterruptWatch::Kept {
    int signal;
    struct sigaction action;
};

InterruptWatch::InterruptWatch() {
    const auto handle = [&](int signal, void (*handler)(int)) {
        struct sigaction action = {};
        action.sa_handler = handler;
        action.sa_flags = SA_RESTART;
        Kept kept{signal, {}};
        (void)sigaction(signal, nullptr, &kept.action);
        if (kept.action.sa_handler == SIG_IGN)
            return;
        (void)sigaction(signal, &action, nullptr);
        m_kept.push_back(kept);
    };
    firstSignal = 0;
    for (const int signal : kSignals)
        handle(signal, QxconfOnSignal);
    handle(SIGPIPE, SIG_IGN);
}

InterruptWatch::~InterruptWatch() {
    for (const Kept& kept : m_kept)
        (void)sigaction(kept.signal, &kept.action, nullptr);
}

int InterruptWatch::Signal() {
    return firstSignal;
}

std::string InterruptWatch::NameOf(int signal) {
    return "signal " + std::to_string(signal);
}

} // namespace qx::cli
