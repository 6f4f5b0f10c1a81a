#include "cli/InterruptWatch.h"

#include <csignal>

namespace qx::cli {

namespace {

volatile std::sig_atomic_t interrupted = 0;

extern "C" void OnInterrupt(int) {
    interrupted = 1;
}

} // namespace

InterruptWatch::InterruptWatch() : m_previous(std::signal(SIGINT, OnInterrupt)) {
    interrupted = 0;
}

InterruptWatch::~InterruptWatch() {
    (void)std::signal(SIGINT, m_previous);
}

bool InterruptWatch::IsInterrupted() const {
    return interrupted != 0;
}

} // namespace qx::cli
