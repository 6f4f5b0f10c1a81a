// KeptCodes: what of a recorded sequence a keyboard can store.
//
// The sequence editor records whatever code a keyboard reports. A stored code is a byte, and a byte
// 0 ends the sequence, so the host that takes a sequence over keeps the codes from 1 to 255 only.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <vector>

namespace qx::host {

struct KeptCodes {
    std::string keyString; // the codes that are kept, in their order
    std::vector<Integer> leftOut;
};

[[nodiscard]] KeptCodes KeepCodes(const std::string& sKeyString);

} // namespace qx::host
