// The window of the host that message boxes and editors belong to.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

// The active window of the thread; where it has none, that of the control that was used last, or
// the first one that can be seen. Null when there is none.
[[nodiscard]] HWND HostWindow();

void NoteControlInUse(HWND control);

} // namespace qx::com
