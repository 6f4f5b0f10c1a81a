// A container of the test's own, for what a foreign one cannot be brought to do: it designs a form,
// and has its controls react to nothing.
#pragma once

#include "com/windows/Client.h"

#include <functional>

namespace qx::test {

class Site : public IOleClientSite, public IOleInPlaceSite, public IDispatch {
public:
    explicit Site(HWND form) : m_form(form) {}
    virtual ~Site() = default;

    bool isUserMode = true;
    bool isDead = false;
    OLE_COLOR background = RGB(210, 220, 190);
    OLE_COLOR foreground = RGB(10, 5, 0);
    ComPtr<IFontDisp> font;                                              // none unless it is set
    std::function<void()> onInPlaceActivate, onShowObject, onUIActivate; // empty: does nothing

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        *out = nullptr;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IOleClientSite))
            return HandOut(static_cast<IOleClientSite*>(this), out);
        if (IsEqualIID(iid, IID_IOleWindow) || IsEqualIID(iid, IID_IOleInPlaceSite))
            return HandOut(static_cast<IOleInPlaceSite*>(this), out);
        if (IsEqualIID(iid, IID_IDispatch))
            return HandOut(static_cast<IDispatch*>(this), out);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_references; } // owned by the test
    [[nodiscard]] ULONG References() const { return m_references; }

    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    HRESULT STDMETHODCALLTYPE ShowObject() override {
        if (onShowObject)
            onShowObject();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_form;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override {
        if (onInPlaceActivate)
            onInPlaceActivate();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override {
        if (onUIActivate)
            onUIActivate();
        return S_OK;
    }
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
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* value,
                                     EXCEPINFO*, UINT*) override {
        switch (id) {
        case DISPID_AMBIENT_USERMODE:
        case DISPID_AMBIENT_UIDEAD:
            V_VT(value) = VT_BOOL;
            V_BOOL(value) =
                (id == DISPID_AMBIENT_UIDEAD ? isDead : isUserMode) ? VARIANT_TRUE : VARIANT_FALSE;
            return S_OK;
        case DISPID_AMBIENT_BACKCOLOR:
        case DISPID_AMBIENT_FORECOLOR:
            V_VT(value) = VT_I4;
            V_I4(value) =
                static_cast<LONG>(id == DISPID_AMBIENT_BACKCOLOR ? background : foreground);
            return S_OK;
        case DISPID_AMBIENT_FONT:
            if (!font)
                return DISP_E_MEMBERNOTFOUND;
            V_VT(value) = VT_DISPATCH;
            V_DISPATCH(value) = ComPtr<IFontDisp>(font).Detach();
            return S_OK;
        default:
            return DISP_E_MEMBERNOTFOUND;
        }
    }

private:
    HWND m_form;
    ULONG m_references = 1;
};

} // namespace qx::test
