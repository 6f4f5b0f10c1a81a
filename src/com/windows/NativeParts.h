// The native child windows of the parts: how each kind is made, and how it shows a part's state.
// Showing never counts as the user's action.
#pragma once

#include "com/faces/Part.h"
#include "com/windows/FaceDrawing.h"

namespace qx::com {

// Messages of a sequence to its parent; wParam is its identifier.
inline constexpr UINT kSequenceKey = WM_APP + 3;  // lParam is the virtual key code
inline constexpr UINT kSequenceType = WM_APP + 4; // a key that types something

// A frame's window is its title. The part outlives the window.
[[nodiscard]] HWND NewWindow(const Part& part, HWND parent, int id);

// The place is left as it is. A control that reacts to nothing has no part enabled.
void ShowState(HWND window, const Part& part, bool reacts);

// The user's input that a notification of the part's window reports; none when it reports none.
[[nodiscard]] bool ReadInput(HWND window, const Part& part, UINT notification, PartInput& input);

} // namespace qx::com
