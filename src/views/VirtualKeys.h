// VirtualKeys: the controls' numbers for the keys of the PC's keyboard.
#pragma once

#include "qxcontrols/common/Types.h"

class QKeyEvent;

namespace qx::views {

// The Windows virtual key code of a pressed key on every system; 0 for a key without one. Systems
// other than Windows do not provide it: there, a character that not every keyboard has a key for,
// such as "!", gets the code for characters typed without a key.
[[nodiscard]] Integer VirtualKeyCode(const QKeyEvent& event);

} // namespace qx::views
