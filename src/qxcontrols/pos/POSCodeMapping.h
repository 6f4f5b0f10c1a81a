// POSCodeMapping: which position code of the keyboard a POS key index (1 to 105) stands for.
//
// Neither member leaves a trace: they are called for every key in turn.
#pragma once

#include "qxcontrols/common/Types.h"

namespace qx {

class POSCodeMapping {
public:
    // Throws std::out_of_range outside 1 to 105.
    [[nodiscard]] Integer GetPositionCodeForKey(Integer nKeyID) const;
    // The lowest key index with the position code; 0 when none has it. Codes 61, 99 and 108 stand
    // at several: these keys are wider than one place.
    [[nodiscard]] Integer GetKeyIndex(Integer nPositionCode) const;
};

} // namespace qx
