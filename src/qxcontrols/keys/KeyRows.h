// Where equal keys are drawn that have no geometry in the layout.
#pragma once

#include "qxcontrols/common/Types.h"

namespace qx {

// Keys in rows, numbered from the top left along the rows; lengths are in the layouts' unit.
struct KeyRows {
    int keysInRow;
    Single stepX, stepY; // from key to key

    struct Place {
        Single left, top, width, height;
    };

    [[nodiscard]] constexpr Place PlaceOf(int key) const {
        constexpr Single kGap = 25;
        return {static_cast<Single>(key % keysInRow) * stepX,
                static_cast<Single>(key / keysInRow) * stepY, stepX - kGap, stepY - kGap};
    }
};

inline constexpr KeyRows kFuncKeyRows{12, 720, 600}; // wide enough for a few words
inline constexpr KeyRows kPosKeyRows{15, 700, 600};  // along the rows of the keyboard's matrix

} // namespace qx
