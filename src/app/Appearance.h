// Appearance: whether the application is light, dark, or as the system's other programs.
#pragma once

#include "host/ColourSet.h"

namespace qx::app {

enum class Appearance { System, Light, Dark };

// For all windows, from now on.
void UseAppearance(Appearance appearance);
// The colours of keys that fit all windows.
[[nodiscard]] host::ColourSetId FittingColours();

} // namespace qx::app
