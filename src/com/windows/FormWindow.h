// FormWindow: a form as a window of its own, before the windows of the host. They take no input
// until the user has left the form.
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

    // Returns when the user has left the form. It is cancelled when the host ends its window, or
    // the thread, or when there can be no window.
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
    HWND m_focus = nullptr; // where the user was when the window was left
    std::wstring m_title;
    bool m_isLeft = false;
};

// The windows of the thread, which take no input as long as this lives.
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
