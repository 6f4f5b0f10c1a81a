// The host's window, the owner of message boxes and editors.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

// The active window of the thread; if there is none, that of the control used last, or else the
// first visible one. Null if there is none of these.
[[nodiscard]] HWND HostWindow();

void NoteControlInUse(HWND control);

} // namespace qx::com
