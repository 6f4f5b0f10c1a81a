// Accessible objects of a keyboard: the window, and each of its keys as a child with a name, a
// position and a default action.
#pragma once

#include "com/windows/Com.h"

namespace qx::com {

// The result of WM_GETOBJECT for the client area of a KeysWindow.
[[nodiscard]] LRESULT AccessibleKeys(HWND window, WPARAM wParam);

} // namespace qx::com
