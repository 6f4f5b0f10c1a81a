// InterruptWatch: while one lives, a signal that asks the program to end (Ctrl+C, SIGTERM, SIGHUP)
// does not end it, but is reported to who asks.
#pragma once

#include <array>
#include <csignal>

namespace qx::cli {

class InterruptWatch {
public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    // Whether one has come since the watch began.
    [[nodiscard]] bool IsInterrupted() const;

private:
#ifdef SIGHUP
    static constexpr std::array kSignals = {SIGINT, SIGTERM, SIGHUP};
#else
    static constexpr std::array kSignals = {SIGINT, SIGTERM};
#endif
    std::array<void (*)(int), kSignals.size()> m_previous;
};

} // namespace qx::cli
