// The numbers of POS keys, blocks and groups.
#pragma once

#include "qxcontrols/common/Types.h"
#include "qxcontrols/device/MemoryMap.h"

#include <stdexcept>
#include <string>

namespace qx {

// Throws std::out_of_range for a number that no such thing has; `what` is its name in the message.
inline void RequirePOSNumber(const char* what, Integer nNumber) {
    if (nNumber < 1 || nNumber > kPOSKeys)
        throw std::out_of_range(std::string(what) + " " + std::to_string(nNumber) +
                                " is not one of 1 to " + std::to_string(kPOSKeys));
}

} // namespace qx
