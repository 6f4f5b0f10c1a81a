#include "com/windows/FaceWindow.h"

#include "com/windows/Server.h"

namespace qx::com {

bool FaceWindow::OpenWindow(const Style& style, const std::wstring& text, HWND parent,
                            const RECT& place) {
    WNDCLASSEXW windows{};
    windows.cbSize = sizeof(windows);
    windows.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
    windows.lpfnWndProc = OnMessage;
    windows.hInstance = Module();
    windows.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windows.lpszClassName = style.windowClass;
    RegisterClassExW(&windows); // fails after the first time, which is harmless
    CreateWindowExW(style.extended, style.windowClass, text.c_str(), style.plain, place.left,
                    place.top, place.right - place.left, place.bottom - place.top, parent, nullptr,
                    Module(), this);
    if (m_window != nullptr)
        Shown().Open(m_window, m_ambient);
    return m_window != nullptr;
}

void FaceWindow::CloseWindow() {
    if (m_window != nullptr)
        DestroyWindow(m_window);
}

LRESULT CALLBACK FaceWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* const created = reinterpret_cast<CREATESTRUCTW*>(lParam);
        auto* const opened = static_cast<FaceWindow*>(created->lpCreateParams);
        opened->m_window = window;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(opened));
    }
    auto* const self = reinterpret_cast<FaceWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    const ComPtr<IUnknown> kept = self->Kept();
    LRESULT result = 0;
    if (FAILED(Guarded([&] {
            result = self->Handle(window, message, wParam, lParam);
            return S_OK;
        })))
        return DefWindowProcW(window, message, wParam, lParam);
    return result;
}

LRESULT FaceWindow::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint(window);
        return 0;
    case WM_ERASEBKGND:
        return 1; // the face draws the whole background
    case WM_SIZE:
        Shown().Arrange(m_ambient);
        break;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
        FollowSystem();
        break;
    case WM_NCDESTROY:
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        Shown().Close();
        m_window = nullptr;
        return DefWindowProcW(window, message, wParam, lParam);
    default:
        break;
    }
    LRESULT result = 0;
    if (m_ambient.isUserMode && !m_ambient.isDead &&
        Shown().Handle(message, wParam, lParam, result))
        return result;
    return DefWindowProcW(window, message, wParam, lParam);
}

void FaceWindow::Paint(HWND window) {
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(window, &paint);
    RECT bounds{};
    GetClientRect(window, &bounds);
    Shown().Draw(context, bounds, m_ambient);
    EndPaint(window, &paint);
}

} // namespace qx::com
