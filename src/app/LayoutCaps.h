// LayoutCaps: the keys of a keyboard as its layout places and names them.
#pragma once

#include "views/KeyPainting.h"

#include <vector>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::app {

// One cap for each key that the keyboard has, numbered by position code, with its caption, its long
// caption as tool tip, and its name.
[[nodiscard]] std::vector<views::KeyCap> LayoutCaps(const QXKeyboardLayoutData& layout);

} // namespace qx::app
