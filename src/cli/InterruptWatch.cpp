#include "cli/InterruptWatch.h"

namespace qx::cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void OnInterrupt(int) {
    interrupted = 1;
}

} // namespace

InterruptWatch::InterruptWatch() : m_previous() {
    interrupted = 0;
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        m_previous[i] = std::signal(kSignals[i], OnInterrupt);
}

InterruptWatch::~InterruptWatch() {
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        (void)std::signal(kSignals[i], m_previous[i]);
}

bool InterruptWatch::IsInterrupted() const {
    return interrupted != 0;
}

} // namespace qx::cli
