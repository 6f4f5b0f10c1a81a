// VirtualKeys: what the controls call the keys of the PC's keyboard.
#pragma once

#include "qxcontrols/common/Types.h"

class QKeyEvent;

namespace qx::views {

// The Windows virtual key code of a pressed key on every system; 0 for a key that has none. On
// systems that do not tell it, a sign that has no key of its own on all keyboards, such as "!",
// has the code of a sign that was not typed with a key.
[[nodiscard]] Integer VirtualKeyCode(const QKeyEvent& event);

} // namespace qx::views
