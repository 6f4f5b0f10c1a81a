// POSCodeMapping: maps POS key indexes (1 to 105) to the keyboard's position codes.
//
// The members are not traced: they are called for every key.
#pragma once

#include "qxcontrols/common/Types.h"

namespace qx {

class POSCodeMapping {
public:
    // Throws std::out_of_range outside 1 to 105.
    [[nodiscard]] Integer GetPositionCodeForKey(Integer nKeyID) const;
    // The lowest key index with the position code; 0 if there is none. Codes 61, 99 and 108 have
    // several: these keys are wider than one place.
    [[nodiscard]] Integer GetKeyIndex(Integer nPositionCode) const;
};

} // namespace qx
