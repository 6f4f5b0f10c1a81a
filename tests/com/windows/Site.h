// A container of the test's own, for situations that a foreign one cannot provide: design mode,
// unresponsive controls, and changing ambient properties.
#pragma once

#include "com/windows/Client.h"

#include <functional>
#include <map>

namespace qx::test {

// Lives on the stack; all references must be released by the end.
template <typename... Interfaces>
class OnStack : public Interfaces... {
public:
    virtual ~OnStack() { EXPECT_EQ(m_references, 0); }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        const bool isFound = IsEqualIID(iid, IID_IUnknown) ? HandFirst<Interfaces...>(out)
                                                           : (Hand<Interfaces>(iid, out) || ...);
        return isFound ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--m_references); }
    [[nodiscard]] int References() const { return m_references; }

private:
    template <typename Interface>
    bool Hand(REFIID iid, void** out) {
        if (!IsEqualIID(iid, __uuidof(Interface)))
            return false;
        return HandOut(static_cast<Interface*>(this), out) == S_OK;
    }
    template <typename First, typename...>
    bool HandFirst(void** out) {
        return HandOut(static_cast<First*>(this), out) == S_OK;
    }

    int m_references = 0;
};

class Site : public OnStack<IOleClientSite, IOleInPlaceSite, IDispatch> {
public:
    explicit Site(HWND form = nullptr) : m_form(form) {}
    ~Site() override {
        for (auto& [id, value] : m_ambient)
            VariantClear(&value);
    }

    void SetAmbient(DISPID id, VARIANT value) { // takes ownership
        VariantClear(&m_ambient[id]);
        m_ambient[id] = value;
    }
    void SetFont(const wchar_t* name, LONGLONG points) {
        FONTDESC wanted{sizeof(FONTDESC),
                        const_cast<wchar_t*>(name),
                        {},
                        FW_NORMAL,
                        DEFAULT_CHARSET,
                        FALSE,
                        FALSE,
                        FALSE};
        wanted.cySize.int64 = points * 10'000;
        ComPtr<IDispatch> font;
        ASSERT_EQ(
            OleCreateFontIndirect(&wanted, IID_IDispatch, reinterpret_cast<void**>(font.Out())),
            S_OK);
        SetAmbient(DISPID_AMBIENT_FONT, Dispatch(font.Detach()));
    }

    // The control fills the form, if there is one.
    HRESULT Place(const ComPtr<IDispatch>& control, LONG verb = OLEIVERB_INPLACEACTIVATE) {
        const auto object = control.As<IOleObject>(IID_IOleObject);
        EXPECT_EQ(object->SetClientSite(this), S_OK);
        RECT bounds{};
        GetClientRect(m_form, &bounds);
        return object->DoVerb(verb, nullptr, this, 0, m_form, &bounds);
    }
    static void TakeAway(const ComPtr<IDispatch>& control) {
        const auto object = control.As<IOleObject>(IID_IOleObject);
        EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
        EXPECT_EQ(object->SetClientSite(nullptr), S_OK);
    }

    std::function<void()> onInPlaceActivate, onShowObject, onUIActivate; // optional

    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Run(onShowObject); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_form;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Run(onInPlaceActivate); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Run(onUIActivate); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
        *frame = nullptr;
        *document = nullptr;
        GetClientRect(m_form, place);
        *clip = *place;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* given,
                                     VARIANT* value, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(flags, DISPATCH_PROPERTYGET);
        EXPECT_EQ(given->cArgs, 0U);
        const auto found = m_ambient.find(id);
        return found == m_ambient.end() ? DISP_E_MEMBERNOTFOUND
                                        : VariantCopy(value, &found->second);
    }

private:
    static HRESULT Run(const std::function<void()>& action) {
        if (action)
            action();
        return S_OK;
    }

    HWND m_form;
    std::map<DISPID, VARIANT> m_ambient;
};

} // namespace qx::test
