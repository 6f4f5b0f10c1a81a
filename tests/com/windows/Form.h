// Form: a window in which a container that we have not written (that of wine's atl100) hosts a
// control; and a host's calls of the control by name.
#pragma once

#include "com/windows/Client.h"
#include "com/windows/Members.h"

#include <oleacc.h>

#include <set>
#include <string>

namespace qx::test {

template <typename Function>
Function AtlFunction(const char* name) {
    return reinterpret_cast<Function>(
        reinterpret_cast<void*>(GetProcAddress(LoadLibraryW(L"atl100.dll"), name)));
}

inline bool AtlStarts() {
    static const bool starts = [] { // wine's fails the second time
        const auto init = AtlFunction<BOOL(WINAPI*)()>("AtlAxWinInit");
        return init != nullptr && init() != FALSE;
    }();
    return starts;
}

inline void PumpMessages() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

// Points from all over the window, once it is drawn.
inline std::set<COLORREF> ColoursOf(HWND window) {
    PumpMessages();
    RECT bounds{};
    GetClientRect(window, &bounds);
    const HDC context = GetDC(window);
    std::set<COLORREF> colours;
    for (int y = 0; y < bounds.bottom; y += 3)
        for (int x = 0; x < bounds.right; x += 3)
            colours.insert(GetPixel(context, x, y));
    ReleaseDC(window, context);
    return colours;
}

inline void Type(HWND field, const wchar_t* text) {
    for (; *text != 0; ++text)
        SendMessageW(field, WM_CHAR, static_cast<WPARAM>(*text), 0);
}

// Null if it has none.
inline ComPtr<IAccessible> AccessibleOf(HWND window) {
    ComPtr<IAccessible> heard;
    EXPECT_EQ(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible,
                                         reinterpret_cast<void**>(heard.Out())),
              S_OK);
    return heard;
}

class Form {
public:
    // Without a frame, because wine would then wait for a window manager.
    explicit Form(int width = 300, int height = 200)
        : m_window(CreateWindowExW(0, L"STATIC", L"form", WS_POPUP | WS_VISIBLE, 10, 10, width,
                                   height, nullptr, nullptr, nullptr, nullptr)) {}
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;
    ~Form() { Clear(); }

    // The control as seen by a host's program; null if it could not be placed.
    ComPtr<IDispatch> Place(const std::string& name) {
        using Create = HRESULT(WINAPI*)(LPCOLESTR, HWND, IStream*, IUnknown**);
        using Get = HRESULT(WINAPI*)(HWND, IUnknown**);
        EXPECT_EQ(AtlFunction<Create>("AtlAxCreateControl")(Wide("QXControls." + name).c_str(),
                                                            m_window, nullptr, m_container.Out()),
                  S_OK)
            << name;
        PumpMessages();
        ComPtr<IUnknown> control;
        EXPECT_EQ(AtlFunction<Get>("AtlAxGetControl")(m_window, control.Out()), S_OK) << name;
        return control.As<IDispatch>(IID_IDispatch);
    }
    void Clear() {
        m_container = nullptr;
        if (m_window != nullptr)
            DestroyWindow(m_window);
        m_window = nullptr;
        PumpMessages();
    }

    [[nodiscard]] HWND Window() const { return m_window; }
    // The control's own window; null if it has none.
    [[nodiscard]] HWND ControlWindow() const {
        return FindWindowExW(m_window, nullptr, L"QXControls.Control", nullptr);
    }
    // A visible child window of the control with this text; without a text, the first of its class.
    [[nodiscard]] HWND Child(const wchar_t* windowClass, const wchar_t* text = nullptr) const {
        HWND child = nullptr;
        do
            child = FindWindowExW(ControlWindow(), child, windowClass, text);
        while (child != nullptr && IsWindowVisible(child) == FALSE);
        return child;
    }

private:
    HWND m_window;
    ComPtr<IUnknown> m_container;
};

inline VARIANT Text(const wchar_t* text) { // freed by Put
    VARIANT variant;
    V_VT(&variant) = VT_BSTR;
    V_BSTR(&variant) = SysAllocString(text);
    return variant;
}

inline ClientCall Get(IDispatch* object, const wchar_t* name, std::vector<VARIANT> arguments = {}) {
    ClientCall call = Call(object, IdOf(object, name), kCall, arguments);
    EXPECT_EQ(call.status, S_OK) << Narrow(name) << ' ' << Narrow(call.text.c_str());
    for (VARIANT& argument : arguments)
        if (V_VT(&argument) == VT_BSTR)
            VariantClear(&argument);
    return call;
}

inline void Put(IDispatch* object, const wchar_t* name, VARIANT value) {
    const auto kind = static_cast<WORD>(V_VT(&value) == VT_DISPATCH ? DISPATCH_PROPERTYPUTREF
                                                                    : DISPATCH_PROPERTYPUT);
    const ClientCall call = Call(object, IdOf(object, name), kind, {value}, {DISPID_PROPERTYPUT});
    EXPECT_EQ(call.status, S_OK) << Narrow(name) << ' ' << Narrow(call.text.c_str());
    if (V_VT(&value) == VT_BSTR)
        VariantClear(&value);
}

inline ComPtr<IDispatch> PartOf(IDispatch* object, const wchar_t* name,
                                std::vector<VARIANT> arguments = {}) {
    return Get(object, name, std::move(arguments)).Object();
}

inline void PutCaption(IDispatch* object, const wchar_t* part, const wchar_t* caption) {
    Put(PartOf(object, part).Get(), L"Caption", Text(caption));
}

// The services that a host sets for its controls, with the simulated keyboard and a layout.
struct Services {
    Services() {
        EXPECT_TRUE(Get(keyboard.Get(), L"Init").Flag());
        Put(layout.Get(), L"LayoutPath", Text(L"layouts\\"));
        EXPECT_TRUE(Get(layout.Get(), L"OpenLayoutByName", {Text(L"us.qxl")}).Flag());
        Get(settings.Get(), L"Load");
    }
    void HandTo(IDispatch* control) const {
        Put(control, L"Keyboard", Dispatch(keyboard.Get()));
        Put(control, L"LayoutSource", Dispatch(layout.Get()));
        Put(control, L"PrefSource", Dispatch(settings.Get()));
    }
    ComPtr<IDispatch> keyboard = NewObject(L"QXControls.QXKeyboardAccess");
    ComPtr<IDispatch> layout = NewObject(L"QXControls.QXKeyboardLayoutData");
    ComPtr<IDispatch> settings = NewObject(L"QXControls.QXProgSettings");
};

} // namespace qx::test
