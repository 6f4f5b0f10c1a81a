// A keyboard drawn into any device context: its keys are scaled into an area, their proportions
// kept. Programmed and current keys differ by a mark besides their colours.
#pragma once

#include "com/faces/Part.h"
#include "com/windows/Com.h"

namespace qx::com {

struct KeysLook {
    HFONT font;
    bool isHighContrast = false; // in the system's colours
    int focus = -1;              // the number of the key that has the focus
    int pressed = -1;
};

// How high they are where they are as wide as this.
[[nodiscard]] int HeightOfKeys(const std::vector<KeyCap>& keys, int width);

// Where the keys are drawn, in their order.
[[nodiscard]] std::vector<RECT> PlacesOf(const std::vector<KeyCap>& keys, const RECT& area);

void DrawKeys(HDC context, const RECT& area, const PartState& state, const KeysLook& look);

} // namespace qx::com
