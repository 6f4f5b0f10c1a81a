// StandardAccessible: an accessible object that answers like the standard one of its window, except
// where a derived class overrides it.
#pragma once

#include "com/windows/Server.h"

#include <oleacc.h>

#include <atomic>
#include <string>

namespace qx::com {

class StandardAccessible : public IAccessible {
public:
    // For the window's client area; throws if the system has no standard object for it.
    explicit StandardAccessible(HWND window);
    virtual ~StandardAccessible() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    // Not needed: clients call the interface directly.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT self, IDispatch** child) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT self, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT self, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT self, BSTR* description) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT self, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT self, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT self, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT self, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT self, BSTR* shortcut) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT self, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT self) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT self) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT self) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

protected:
    [[nodiscard]] HWND Window() const { return m_window; }

private:
    InUse m_inUse;
    const HWND m_window;
    ComPtr<IAccessible> m_standard;
    std::atomic<ULONG> m_references = 1;
};

// Takes ownership of the object and returns the result for WM_GETOBJECT.
[[nodiscard]] LRESULT AnswerWith(IAccessible* created, WPARAM wParam);

// The result of WM_GETOBJECT for a window whose accessible name is not its text.
[[nodiscard]] LRESULT AccessibleByName(HWND window, WPARAM wParam, std::wstring name);

} // namespace qx::com
