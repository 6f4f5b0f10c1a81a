#include "com/windows/KeysWindow.h"

#include "com/windows/KeysAccessible.h"
#include "com/windows/Server.h"

#include <commctrl.h>
#include <windowsx.h>

#include <cstdlib>
#include <limits>
#include <memory>

namespace qx::com {
namespace {

constexpr wchar_t kWindowClass[] = L"QXControls.Keys";
constexpr UINT_PTR kToolTip = 1;

} // namespace

HWND KeysWindow::Create(HWND parent, int id) {
    WNDCLASSEXW windows{};
    windows.cbSize = sizeof(windows);
    windows.style = CS_HREDRAW | CS_VREDRAW;
    windows.lpfnWndProc = OnMessage;
    windows.hInstance = Module();
    windows.hCursor = LoadCursorW(nullptr, reinterpret_cast<LPCWSTR>(IDC_ARROW));
    windows.lpszClassName = kWindowClass;
    RegisterClassExW(&windows); // fails after the first time, which is harmless
    return CreateWindowExW(0, kWindowClass, L"", WS_CHILD | WS_CLIPSIBLINGS | WS_TABSTOP, 0, 0, 0,
                           0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Module(),
                           nullptr);
}

KeysWindow* KeysWindow::Of(HWND window) {
    wchar_t name[32] = {};
    GetClassNameW(window, name, 32);
    if (std::wstring_view(name) != kWindowClass ||
        GetWindowThreadProcessId(window, nullptr) != GetCurrentThreadId())
        return nullptr;
    return reinterpret_cast<KeysWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

void KeysWindow::Unregister() {
    UnregisterClassW(kWindowClass, Module());
}

void KeysWindow::Show(const PartState& state, HFONT font, const FaceColours& colours) {
    const bool isMoved = state.value != m_state.value;
    m_state = state;
    m_font = font;
    m_background = colours.background;
    m_isHighContrast = colours.isHighContrast;
    if (isMoved || RowOf(m_focus) < 0)
        FocusOn(RowOf(state.value));
    ShowToolTip(RowOf(m_pointed));
    InvalidateRect(m_window, nullptr, FALSE);
}

std::vector<RECT> KeysWindow::Places() const {
    RECT area{};
    GetClientRect(m_window, &area);
    return PlacesOf(m_state.keys, area);
}

int KeysWindow::RowOf(int index) const {
    for (std::size_t row = 0; row < m_state.keys.size(); ++row)
        if (m_state.keys[row].index == index)
            return static_cast<int>(row);
    return -1;
}

int KeysWindow::RowAt(POINT point) const {
    const std::vector<RECT> places = Places();
    for (std::size_t row = 0; row < places.size(); ++row)
        if (PtInRect(&places[row], point) != FALSE)
            return static_cast<int>(row);
    return -1;
}

// The nearest key in the direction; distance across it counts double.
int KeysWindow::RowToward(int dx, int dy) const {
    const std::vector<RECT> places = Places();
    const int from = FocusRow();
    if (from < 0)
        return places.empty() ? -1 : 0;
    const auto middle = [&](std::size_t row) {
        return POINT{(places[row].left + places[row].right) / 2,
                     (places[row].top + places[row].bottom) / 2};
    };
    const POINT start = middle(static_cast<std::size_t>(from));
    int nearest = from;
    LONG least = std::numeric_limits<LONG>::max();
    for (std::size_t row = 0; row < places.size(); ++row) {
        const POINT end = middle(row);
        const LONG along = (end.x - start.x) * dx + (end.y - start.y) * dy;
        const LONG across = std::abs((end.x - start.x) * dy) + std::abs((end.y - start.y) * dx);
        if (along > across / 2 && along + 2 * across < least) {
            least = along + 2 * across;
            nearest = static_cast<int>(row);
        }
    }
    return nearest;
}

void KeysWindow::FocusOn(int row) {
    m_focus = row < 0 ? -1 : m_state.keys[static_cast<std::size_t>(row)].index;
    InvalidateRect(m_window, nullptr, FALSE);
    if (row >= 0 && GetFocus() == m_window)
        NotifyWinEvent(EVENT_OBJECT_FOCUS, m_window, OBJID_CLIENT, row + 1);
}

void KeysWindow::Pick(int row) {
    if (row < 0 || !m_state.keys[static_cast<std::size_t>(row)].isEnabled ||
        IsWindowEnabled(GetAncestor(m_window, GA_ROOT)) == FALSE)
        return; // screen readers can call this even while a modal window is open
    FocusOn(row);
    SendMessageW(GetParent(m_window), kKeyPicked, static_cast<WPARAM>(GetDlgCtrlID(m_window)),
                 m_focus); // may destroy this object
}

bool KeysWindow::HandleKey(WPARAM key) {
    int row = -1;
    switch (key) {
    case VK_LEFT:
        row = RowToward(-1, 0);
        break;
    case VK_RIGHT:
        row = RowToward(1, 0);
        break;
    case VK_UP:
        row = RowToward(0, -1);
        break;
    case VK_DOWN:
        row = RowToward(0, 1);
        break;
    case VK_HOME:
        row = m_state.keys.empty() ? -1 : 0;
        break;
    case VK_END:
        row = static_cast<int>(m_state.keys.size()) - 1;
        break;
    case VK_SPACE:
    case VK_RETURN:
        Pick(FocusRow());
        return true;
    default:
        return false;
    }
    if (row >= 0 && row != FocusRow()) {
        FocusOn(row);
        SendMessageW(GetParent(m_window), kKeyReached, static_cast<WPARAM>(GetDlgCtrlID(m_window)),
                     m_focus);
    }
    return true;
}

void KeysWindow::Release(POINT point) {
    const int pressed = std::exchange(m_pressed, -1);
    ReleaseCapture();
    InvalidateRect(m_window, nullptr, FALSE);
    const int row = RowAt(point);
    if (row >= 0 && m_state.keys[static_cast<std::size_t>(row)].index == pressed)
        Pick(row);
}

// The tooltip is that of the key under the pointer.
void KeysWindow::Point(const MSG& mouse) {
    if (mouse.message == WM_MOUSEMOVE)
        ShowToolTip(RowAt({GET_X_LPARAM(mouse.lParam), GET_Y_LPARAM(mouse.lParam)}));
    if (m_toolTip != nullptr)
        SendMessageW(m_toolTip, TTM_RELAYEVENT, 0,
                     reinterpret_cast<LPARAM>(const_cast<MSG*>(&mouse)));
}

// Each key's tooltip is a separate tool, so that the delay starts when the pointer reaches the key.
void KeysWindow::ShowToolTip(int row) {
    const KeyCap none;
    const KeyCap& key = row < 0 ? none : m_state.keys[static_cast<std::size_t>(row)];
    const int pointed = row < 0 ? -1 : key.index;
    if (pointed == m_pointed && key.toolTip == m_toolTipText)
        return;
    if (m_toolTip == nullptr)
        m_toolTip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                    WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0, m_window,
                                    nullptr, Module(), nullptr);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.hwnd = m_window;
    tool.uId = kToolTip;
    if (!m_toolTipText.empty())
        SendMessageW(m_toolTip, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    m_pointed = pointed;
    m_toolTipText = key.toolTip;
    if (m_toolTipText.empty())
        return;
    std::wstring text = WideFromUtf8(m_toolTipText);
    tool.rect = Places()[static_cast<std::size_t>(row)];
    tool.lpszText = text.data();
    SendMessageW(m_toolTip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void KeysWindow::Draw(HDC context, const RECT& area) const {
    FillArea(context, area, m_background);
    DrawKeys(context, area, m_state,
             {m_font, m_isHighContrast, GetFocus() == m_window ? m_focus : -1, m_pressed});
}

// Through a bitmap, to avoid flicker.
void KeysWindow::Paint() {
    PAINTSTRUCT paint{};
    const HDC window = BeginPaint(m_window, &paint);
    RECT area{};
    GetClientRect(m_window, &area);
    const HDC context = CreateCompatibleDC(window);
    const HBITMAP bitmap = CreateCompatibleBitmap(window, area.right, area.bottom);
    const HGDIOBJ earlier = SelectObject(context, bitmap);
    Draw(context, area);
    BitBlt(window, 0, 0, area.right, area.bottom, context, 0, 0, SRCCOPY);
    SelectObject(context, earlier);
    DeleteObject(bitmap);
    DeleteDC(context);
    EndPaint(m_window, &paint);
}

LRESULT KeysWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = m_window;
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST)
        Point({window, message, wParam, lParam, 0, point});
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_PRINTCLIENT: {
        RECT area{};
        GetClientRect(window, &area);
        Draw(reinterpret_cast<HDC>(wParam), area);
        return 0;
    }
    case WM_ERASEBKGND:
        return 1;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
    case WM_SIZE:
        ShowToolTip(-1);
        break;
    case WM_DESTROY:
        if (m_toolTip != nullptr)
            DestroyWindow(m_toolTip);
        m_toolTip = nullptr;
        break;
    case WM_SETFOCUS:
        FocusOn(FocusRow() < 0 && !m_state.keys.empty() ? 0 : FocusRow());
        return 0;
    case WM_KILLFOCUS:
        InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_LBUTTONDOWN: {
        SetFocus(window);
        const int row = RowAt(point);
        if (row >= 0) {
            m_pressed = m_state.keys[static_cast<std::size_t>(row)].index;
            SetCapture(window);
            InvalidateRect(window, nullptr, FALSE);
        }
        return 0;
    }
    case WM_LBUTTONUP:
        if (m_pressed >= 0)
            Release(point);
        return 0;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != window)
            InvalidateRect(window, nullptr, FALSE);
        return 0;
    case WM_KEYDOWN:
        if (HandleKey(wParam))
            return 0;
        break;
    case WM_GETOBJECT:
        if (static_cast<LONG>(lParam) == OBJID_CLIENT)
            return AccessibleKeys(window, wParam);
        break;
    default:
        break;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK KeysWindow::OnMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* const keys = reinterpret_cast<KeysWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    LRESULT result = 0;
    const HRESULT status = Guarded([&] {
        if (message == WM_NCCREATE) {
            const auto made = new KeysWindow(window);
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made));
        } else if (message == WM_NCDESTROY && keys != nullptr) {
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            delete keys;
        } else if (keys != nullptr) {
            result = keys->Handle(message, wParam, lParam);
            return S_OK;
        }
        result = DefWindowProcW(window, message, wParam, lParam);
        return S_OK;
    });
    return SUCCEEDED(status) ? result : 0;
}

} // namespace qx::com
