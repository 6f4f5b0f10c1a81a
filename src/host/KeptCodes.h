// KeptCodes: the part of a recorded sequence that a keyboard can store.
//
// The sequence editor records any code that a keyboard reports. A stored code is a byte, and 0 ends
// the sequence, so the host that accepts a sequence keeps only the codes from 1 to 255.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <vector>

namespace qx::host {

struct KeptCodes {
    std::string keyString; // the kept codes, in order
    std::vector<Integer> leftOut;
};

[[nodiscard]] KeptCodes KeepCodes(const std::string& sKeyString);

} // namespace qx::host
