// Draws a keyboard into any device context: the keys are scaled to an area, keeping their
// proportions. Programmed and current keys are marked by more than their colours.
#pragma once

#include "com/faces/Part.h"
#include "com/windows/Com.h"

namespace qx::com {

struct KeysLook {
    HFONT font;
    bool isHighContrast = false; // use the system colours
    int focus = -1;              // the number of the key that has the focus
    int pressed = -1;
};

// The height of the keyboard if it is this wide.
[[nodiscard]] int HeightOfKeys(const std::vector<KeyCap>& keys, int width);

// Where the keys are drawn, in the order of `keys`.
[[nodiscard]] std::vector<RECT> PlacesOf(const std::vector<KeyCap>& keys, const RECT& area);

void DrawKeys(HDC context, const RECT& area, const PartState& state, const KeysLook& look);

} // namespace qx::com
