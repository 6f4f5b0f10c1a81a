// The control's window, and how a container activates it in place.
#include "com/windows/Control.h"

#include "com/windows/FormWindow.h"
#include "com/windows/HostWindow.h"
#include "com/windows/KeysWindow.h"

namespace qx::com {
namespace {

constexpr wchar_t kWindowClass[] = L"QXControls.Control";
constexpr DWORD kStyle = WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS | WS_VISIBLE | WS_TABSTOP;

} // namespace

void UnregisterControlWindows() {
    UnregisterClassW(kWindowClass, Module());
    KeysWindow::Unregister();
    FormWindow::Unregister();
}

bool Control::IsShown() const {
    return Served().type.look == Look::Visible || !m_ambient.isUserMode;
}

// At each notification the container may react by removing the control from the form.
HRESULT Control::ActivateInPlace() {
    if (m_window != nullptr) {
        ShowWindow(m_window, SW_SHOWNA);
        return S_OK;
    }
    if (!IsShown())
        return OLEOBJ_S_CANNOT_DOVERB_NOW;
    const auto site = m_site.As<IOleInPlaceSite>(IID_IOleInPlaceSite);
    if (!site)
        return E_FAIL;
    if (site->CanInPlaceActivate() != S_OK)
        return OLEOBJ_S_CANNOT_DOVERB_NOW;
    HWND parent = nullptr;
    RECT place{};
    RECT clip{};
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof(info);
    HRESULT result = site->GetWindow(&parent);
    if (SUCCEEDED(result))
        result = site->GetWindowContext(frame.Out(), document.Out(), &place, &clip, &info);
    if (FAILED(result))
        return result;
    m_inPlaceSite = site;
    m_frame = frame;
    result = site->OnInPlaceActivate();
    if (FAILED(result)) {
        m_inPlaceSite = nullptr;
        m_frame = nullptr;
        return result;
    }
    if (!m_inPlaceSite)
        return E_FAIL;
    const std::wstring name = Wide(Served().type.name); // the name that screen readers announce
    if (!OpenWindow({kWindowClass, WS_EX_CONTROLPARENT, kStyle}, name, parent, place)) {
        InPlaceDeactivate();
        return E_FAIL;
    }
    NoteControlInUse(m_window);
    if (const ComPtr<IOleClientSite> client = m_site)
        client->ShowObject();
    return m_window == nullptr ? E_FAIL : S_OK;
}

HRESULT Control::ActivateUI() {
    const HRESULT result = ActivateInPlace();
    if (result != S_OK || m_isUIActive)
        return result;
    m_isUIActive = true;
    NoteControlInUse(m_window);
    const ComPtr<IOleInPlaceFrame> frame = m_frame;
    if (const ComPtr<IOleInPlaceSite> site = m_inPlaceSite)
        site->OnUIActivate();
    if (frame && m_isUIActive)
        frame->SetActiveObject(static_cast<IOleInPlaceActiveObject*>(this),
                               Wide(Served().type.name).c_str());
    if (m_window != nullptr && m_isUIActive && !IsChild(m_window, GetFocus()))
        SetFocus(m_window);
    return m_window == nullptr ? E_FAIL : S_OK;
}

HRESULT Control::InPlaceDeactivate() {
    return Home().Enter([&] {
        UIDeactivate();
        CloseWindow();
        if (const auto site = std::exchange(m_inPlaceSite, nullptr))
            site->OnInPlaceDeactivate();
        m_frame = nullptr;
        return S_OK;
    });
}

HRESULT Control::UIDeactivate() {
    return Home().Enter([&] {
        if (!std::exchange(m_isUIActive, false))
            return S_OK;
        if (const ComPtr<IOleInPlaceFrame> frame = m_frame)
            frame->SetActiveObject(nullptr, nullptr);
        if (const ComPtr<IOleInPlaceSite> site = m_inPlaceSite)
            site->OnUIDeactivate(FALSE);
        return S_OK;
    });
}

HRESULT Control::GetWindow(HWND* window) {
    return Home().Enter(window, [&] {
        *window = m_window;
        return m_window == nullptr ? E_FAIL : S_OK;
    });
}

HRESULT Control::SetObjectRects(LPCRECT place, LPCRECT clip) {
    if (place == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        if (m_window == nullptr)
            return S_OK;
        RECT seen = *place;
        const bool fWhole = clip == nullptr || (IntersectRect(&seen, place, clip) != FALSE &&
                                                EqualRect(&seen, place) != FALSE);
        HRGN region = nullptr;
        if (!fWhole) {
            OffsetRect(&seen, -place->left, -place->top);
            region = CreateRectRgnIndirect(&seen); // the window owns the region from here on
        }
        SetWindowRgn(m_window, region, TRUE);
        MoveWindow(m_window, place->left, place->top, place->right - place->left,
                   place->bottom - place->top, TRUE);
        return S_OK;
    });
}

HRESULT Control::TranslateAccelerator(LPMSG message) {
    if (message == nullptr)
        return E_POINTER;
    return Home().Enter([&] {
        if (m_face->TakesKey(*message))
            return S_OK;
        const auto site = m_site.As<IOleControlSite>(IID_IOleControlSite);
        return site ? site->TranslateAccelerator(message, 0) : S_FALSE;
    });
}

LRESULT Control::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isActivating = message == WM_MOUSEACTIVATE || message == WM_SETFOCUS;
    if (isActivating && m_ambient.isUserMode && !m_ambient.isDead)
        ActivateUI();
    return FaceWindow::Handle(window, message, wParam, lParam);
}

} // namespace qx::com
