#include "qxcontrols/platform/TickCounter.h"

#include <chrono>

namespace qx {

std::uint32_t TickCounter::GetTickCount() {
    using namespace std::chrono;
    return static_cast<std::uint32_t>(
        duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

} // namespace qx
