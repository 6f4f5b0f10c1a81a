// FormWindow: a form as a separate window, in front of the host's windows, which are disabled
// until the user leaves the form.
#pragma once

#include "com/faces/Forms.h"
#include "com/windows/FaceWindow.h"
#include "com/windows/PartsFace.h"

#include <string>
#include <vector>

namespace qx::com {

class FormWindow : private FaceWindow {
public:
    explicit FormWindow(FormTable table);
    ~FormWindow() override;

    // Returns when the user has left the form. The form is cancelled if the host closes its window
    // or ends the thread, or if no window can be created.
    void Run();

    static void Unregister();

private:
    bool Open(HWND owner);
    void HandleMessages();
    bool TakesKey(MSG& message);
    void Leave();
    void ShowTitle();
    [[nodiscard]] Face& Shown() override { return m_face; }
    void FollowSystem() override;
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) override;
    void Activate(bool isActive);

    FormTable m_table;
    PartsFace m_face;
    Subscription m_closed;
    HWND m_focus = nullptr; // the control that had the focus when the window was deactivated
    std::wstring m_title;
    bool m_isLeft = false;
};

// Disables the other windows of the thread during its lifetime.
class OtherWindowsDisabled {
public:
    explicit OtherWindowsDisabled(HWND exception);
    OtherWindowsDisabled(const OtherWindowsDisabled&) = delete;
    OtherWindowsDisabled& operator=(const OtherWindowsDisabled&) = delete;
    ~OtherWindowsDisabled();

private:
    std::vector<HWND> m_windows;
};

} // namespace qx::com
