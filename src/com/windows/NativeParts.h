// The native child windows of the parts: creates the window for each kind and shows a part's state
// in it. Showing never counts as the user's action.
#pragma once

#include "com/faces/Part.h"
#include "com/windows/FaceDrawing.h"

namespace qx::com {

// Messages of a sequence to its parent; wParam is its identifier.
inline constexpr UINT kSequenceKey = WM_APP + 3;  // lParam is the virtual key code
inline constexpr UINT kSequenceType = WM_APP + 4; // a key that types something

// For a frame, the window is its title. The part outlives the window.
[[nodiscard]] HWND NewWindow(const Part& part, HWND parent, int id);

// Leaves the position unchanged. If `reacts` is false, every part is disabled.
void ShowState(HWND window, const Part& part, bool reacts);

// Reads the user's input that a notification of the part's window reports; false if there is none.
[[nodiscard]] bool ReadInput(HWND window, const Part& part, UINT notification, PartInput& input);

} // namespace qx::com
