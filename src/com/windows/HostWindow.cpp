#include "com/windows/HostWindow.h"

namespace qx::com {
namespace {

HWND& ControlInUse() {
    static thread_local HWND control = nullptr;
    return control;
}

BOOL CALLBACK TakeFirstVisible(HWND window, LPARAM found) {
    if (IsWindowVisible(window) == FALSE || IsWindowEnabled(window) == FALSE)
        return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

} // namespace

void NoteControlInUse(HWND control) {
    ControlInUse() = control;
}

HWND HostWindow() {
    if (const HWND active = GetActiveWindow())
        return active;
    const HWND form = GetAncestor(ControlInUse(), GA_ROOT); // null if the control is gone
    if (form != nullptr && IsWindowVisible(form) != FALSE)
        return GetLastActivePopup(form);
    HWND first = nullptr;
    EnumThreadWindows(GetCurrentThreadId(), TakeFirstVisible, reinterpret_cast<LPARAM>(&first));
    return first;
}

} // namespace qx::com
