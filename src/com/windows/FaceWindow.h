// FaceWindow: a window that shows a face, on a host's form or as a form of its own. It draws the
// face, has it arranged anew when its size changes, and hands it the messages that are left.
#pragma once

#include "com/windows/Face.h"

#include <string>

namespace qx::com {

class FaceWindow {
public:
    FaceWindow(const FaceWindow&) = delete;
    FaceWindow& operator=(const FaceWindow&) = delete;

protected:
    FaceWindow() = default;
    virtual ~FaceWindow() = default; // after CloseWindow

    struct Style {
        const wchar_t* windowClass; // which the module takes back when it is unloaded
        DWORD extended, plain;
    };
    // Whether the window is there; showing the face may have closed it again.
    bool OpenWindow(const Style& style, const std::wstring& text, HWND parent, const RECT& place);
    void CloseWindow();

    [[nodiscard]] virtual Face& Shown() = 0;
    // What must not go while a message is handled; null when nothing can let it go.
    [[nodiscard]] virtual ComPtr<IUnknown> Kept() { return nullptr; }
    // The system's colours, fonts or sizes have changed.
    virtual void FollowSystem() = 0;
    virtual LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    Ambient m_ambient;
    HWND m_window = nullptr;

private:
    static LRESULT CALLBACK OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HWND window);
};

} // namespace qx::com
