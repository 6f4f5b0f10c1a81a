#include "com/windows/FormWindow.h"

#include "com/windows/HostWindow.h"
#include "com/windows/Server.h"

#include <algorithm>

namespace qx::com {
namespace {

constexpr wchar_t kWindowClass[] = L"QXControls.Form";
constexpr DWORD kStyle =
    WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MAXIMIZEBOX | WS_CLIPCHILDREN;
constexpr SIZE kLines{60, 38}; // window size, in line heights of its font

// Centred on the owner's screen, and no larger than that.
RECT PlaceBefore(HWND owner, const Ambient& ambient) {
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& room = monitor.rcWork;
    const FaceFont font(ambient);
    const int line = FontMeasures(font.Get()).Line();
    const LONG width = std::min<LONG>(kLines.cx * line, (room.right - room.left) * 9 / 10);
    const LONG height = std::min<LONG>(kLines.cy * line, (room.bottom - room.top) * 9 / 10);
    const LONG left = (room.left + room.right - width) / 2;
    const LONG top = (room.top + room.bottom - height) / 2;
    return {left, top, left + width, top + height};
}

BOOL CALLBACK CollectActive(HWND window, LPARAM windows) {
    if (IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE)
        reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

} // namespace

FormWindow::FormWindow(FormTable table)
    : m_table(std::move(table)), m_face(nullptr, std::move(m_table.face), [this] { ShowTitle(); }),
      m_closed(m_table.onClosed([this] { m_isLeft = true; })) {}

FormWindow::~FormWindow() {
    CloseWindow();
}

void FormWindow::Unregister() {
    UnregisterClassW(kWindowClass, Module());
}

void FormWindow::Run() {
    const HWND owner = HostWindow();
    if (Open(owner)) {
        const OtherWindowsDisabled modal(m_window);
        ShowWindow(m_window, SW_SHOW);
        HandleMessages();
    }
    if (!m_isLeft)
        m_table.cancel();
    CloseWindow();
    if (m_table.unload)
        m_table.unload();
    if (IsWindow(owner) != FALSE)
        SetActiveWindow(owner);
}

bool FormWindow::Open(HWND owner) {
    m_title = WideFromUtf8(m_table.title());
    return OpenWindow({kWindowClass, WS_EX_CONTROLPARENT | WS_EX_DLGMODALFRAME, kStyle}, m_title,
                      owner, PlaceBefore(owner, m_ambient));
}

void FormWindow::HandleMessages() {
    MSG message;
    while (!m_isLeft && m_window != nullptr) {
        const BOOL got = GetMessageW(&message, nullptr, 0, 0);
        if (got <= 0) { // WM_QUIT also ends the host's loop
            if (got == 0)
                PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (TakesKey(message))
            continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool FormWindow::TakesKey(MSG& message) {
    if (message.hwnd != m_window && IsChild(m_window, message.hwnd) == FALSE)
        return false;
    bool isTaken = true;
    const HRESULT status = Guarded([&] {
        const bool isControl = GetKeyState(VK_CONTROL) < 0;
        const bool isKey = message.message == WM_KEYDOWN;
        if (isKey && message.wParam == VK_ESCAPE)
            Leave();
        else if (isKey && message.wParam == VK_RETURN && isControl)
            m_table.accept();
        else if (isKey && message.wParam == 'Z' && isControl && m_table.undo)
            m_table.undo();
        else if (!m_face.TakesKey(message)) {
            isTaken = isKey && message.wParam == VK_TAB;
            if (isTaken)
                m_face.FocusOn(GetKeyState(VK_SHIFT) < 0);
        }
        return S_OK;
    });
    return SUCCEEDED(status) && isTaken;
}

// Leaves by Esc or the close button, which asks first if there are changes.
void FormWindow::Leave() {
    if (m_table.isChanged() && MessageBoxW(m_window, L"Discard the changes?", m_title.c_str(),
                                           MB_YESNO | MB_ICONQUESTION | MB_DEFBUTTON2) != IDYES)
        return;
    m_table.cancel();
}

void FormWindow::ShowTitle() {
    static_cast<void>(Guarded([&] {
        const std::wstring title = WideFromUtf8(m_table.title());
        if (title != std::exchange(m_title, title) && m_window != nullptr)
            SetWindowTextW(m_window, title.c_str());
        return S_OK;
    }));
}

void FormWindow::FollowSystem() {
    m_ambient = {};
    m_face.Arrange(m_ambient);
    InvalidateRect(m_window, nullptr, FALSE);
}

LRESULT FormWindow::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ACTIVATE:
        Activate(LOWORD(wParam) != WA_INACTIVE);
        return 0;
    case WM_ACTIVATEAPP:
        if (m_table.activateApplication)
            m_table.activateApplication(wParam != FALSE);
        break;
    case WM_CLOSE:
        Leave();
        return 0;
    default:
        break;
    }
    return FaceWindow::Handle(window, message, wParam, lParam);
}

void FormWindow::Activate(bool isActive) {
    if (!isActive)
        m_focus = GetFocus();
    else if (IsChild(m_window, m_focus) != FALSE)
        SetFocus(m_focus);
    else
        m_face.FocusOn(false);
    if (m_table.activate)
        m_table.activate(isActive);
}

OtherWindowsDisabled::OtherWindowsDisabled(HWND exception) {
    EnumThreadWindows(GetCurrentThreadId(), CollectActive, reinterpret_cast<LPARAM>(&m_windows));
    std::erase(m_windows, exception);
    for (const HWND window : m_windows)
        EnableWindow(window, FALSE);
}

OtherWindowsDisabled::~OtherWindowsDisabled() {
    for (const HWND window : m_windows)
        EnableWindow(window, TRUE); // harmless if the window is gone
}

} // namespace qx::com
