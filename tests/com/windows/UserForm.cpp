#include "com/windows/UserForm.h"

#include <commctrl.h>
#include <oleacc.h>

#include <stdexcept>

namespace qx::test {
namespace {

using com::ComPtr;

constexpr int kWidth = 1000;
constexpr int kHeight = 700;

template <typename Function>
Function AtlFunction(const char* name) {
    const auto found = reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl100.dll"), name)));
    if (found == nullptr)
        throw std::runtime_error(std::string("atl100.dll has no ") + name);
    return found;
}

void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

std::string Narrow(const std::wstring& text) {
    return {text.begin(), text.end()}; // scripts are ASCII
}

std::wstring TextOf(HWND window) {
    wchar_t text[256] = {};
    GetWindowTextW(window, text, 256);
    return text;
}

void TellParent(HWND window, WORD notification) {
    SendMessageW(GetParent(window), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(window), notification),
                 reinterpret_cast<LPARAM>(window));
}

} // namespace

// Without a frame, because wine would then wait for a window manager.
UserForm::UserForm(IUnknown* control)
    : m_window(CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 0, 0, kWidth, kHeight,
                               nullptr, nullptr, nullptr, nullptr)) {
    using Init = BOOL(WINAPI*)();
    using Attach = HRESULT(WINAPI*)(IUnknown*, HWND, IUnknown**);
    static const bool starts = AtlFunction<Init>("AtlAxWinInit")() != FALSE; // once per process
    if (!starts ||
        FAILED(AtlFunction<Attach>("AtlAxAttachControl")(control, m_window, m_container.Out())))
        throw std::runtime_error("the control cannot be placed");
    PumpMessages();
}

UserForm::~UserForm() {
    m_container = nullptr;
    DestroyWindow(m_window);
    PumpMessages();
}

HWND UserForm::Child(const wchar_t* windowClass, const std::wstring& sought,
                     const std::function<bool(HWND)>& fits) const {
    const HWND control = FindWindowExW(m_window, nullptr, L"QXControls.Control", nullptr);
    HWND child = nullptr;
    while ((child = FindWindowExW(control, child, windowClass, nullptr)) != nullptr)
        if (IsWindowVisible(child) != FALSE && fits(child))
            return child;
    throw std::runtime_error("the form shows no " + Narrow(windowClass) + " " + Narrow(sought));
}

void UserForm::Press(const std::wstring& text) {
    const HWND button = Child(L"BUTTON", text, [&](HWND window) { return TextOf(window) == text; });
    if (IsWindowEnabled(button) == FALSE)
        throw std::runtime_error("disabled: " + Narrow(text));
    SendMessageW(button, BM_CLICK, 0, 0);
    PumpMessages();
}

void UserForm::Choose(const std::wstring& text) {
    const auto lineOf = [&](HWND list) {
        return SendMessageW(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                            reinterpret_cast<LPARAM>(text.c_str()));
    };
    const HWND list = Child(L"LISTBOX", text, [&](HWND window) { return lineOf(window) >= 0; });
    SendMessageW(list, LB_SETCURSEL, static_cast<WPARAM>(lineOf(list)), 0);
    TellParent(list, LBN_SELCHANGE);
    PumpMessages();
}

void UserForm::Pick(const std::wstring& name) {
    const HWND keys = Child(L"QXControls.Keys", name, [](HWND) { return true; });
    ComPtr<IAccessible> heard;
    LONG count = 0;
    if (FAILED(AccessibleObjectFromWindow(keys, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                          reinterpret_cast<void**>(heard.Out()))) ||
        FAILED(heard->get_accChildCount(&count)))
        throw std::runtime_error("keys that no screen reader finds");
    for (LONG i = 1; i <= count; ++i) {
        VARIANT key;
        V_VT(&key) = VT_I4;
        V_I4(&key) = i;
        BSTR spoken = nullptr;
        heard->get_accName(key, &spoken);
        const std::wstring text = spoken == nullptr ? L"" : spoken;
        SysFreeString(spoken);
        if (text != name && !text.starts_with(name + L","))
            continue;
        heard->accDoDefaultAction(key);
        PumpMessages();
        return;
    }
    throw std::runtime_error("no key " + Narrow(name));
}

void UserForm::Slide(int position) {
    const HWND slider = Child(TRACKBAR_CLASSW, L"", [](HWND) { return true; });
    SendMessageW(slider, TBM_SETPOS, TRUE, position);
    SendMessageW(GetParent(slider), WM_HSCROLL, TB_ENDTRACK, reinterpret_cast<LPARAM>(slider));
    PumpMessages();
}

void UserForm::Type(const std::wstring& text) {
    const HWND field = Child(L"EDIT", text, [](HWND window) {
        return (GetWindowLongPtrW(window, GWL_STYLE) & ES_READONLY) == 0;
    });
    for (const wchar_t letter : text)
        SendMessageW(field, WM_CHAR, static_cast<WPARAM>(letter), 0);
    PumpMessages();
}

} // namespace qx::test
