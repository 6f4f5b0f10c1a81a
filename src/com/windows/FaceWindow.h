// FaceWindow: a window that shows a face, on a host's form or as a separate form. It draws the
// face, lays it out again when its size changes, and passes it the remaining messages.
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
    virtual ~FaceWindow() = default; // call CloseWindow first

    struct Style {
        const wchar_t* windowClass; // unregistered when the module is unloaded
        DWORD extended, plain;
    };
    // False if there is no window: showing the face may already have closed it.
    bool OpenWindow(const Style& style, const std::wstring& text, HWND parent, const RECT& place);
    void CloseWindow();

    [[nodiscard]] virtual Face& Shown() = 0;
    // An object to keep alive while a message is handled; null if nothing can release it.
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
