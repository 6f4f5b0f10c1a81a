#include "qxcontrols/platform/PendingMessages.h"

#include <chrono>
#include <thread>

namespace qx {

void PendingMessages::Process() {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

} // namespace qx
