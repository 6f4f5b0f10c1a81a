#include "com/windows/StandardAccessible.h"

namespace qx::com {
namespace {

class NamedAccessible : public StandardAccessible {
public:
    NamedAccessible(HWND window, std::wstring name)
        : StandardAccessible(window), m_name(std::move(name)) {}

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT self, BSTR* name) override {
        if (V_VT(&self) != VT_I4 || V_I4(&self) != CHILDID_SELF || name == nullptr)
            return StandardAccessible::get_accName(self, name);
        *name = SysAllocString(m_name.c_str());
        return *name == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    const std::wstring m_name;
};

} // namespace

StandardAccessible::StandardAccessible(HWND window) : m_window(window) {
    if (FAILED(CreateStdAccessibleObject(window, OBJID_CLIENT, IID_IAccessible,
                                         reinterpret_cast<void**>(m_standard.Out()))))
        throw std::runtime_error("the system has no accessible object for a window");
}

HRESULT StandardAccessible::QueryInterface(REFIID iid, void** out) {
    if (out == nullptr)
        return E_POINTER;
    *out = nullptr;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
        IsEqualIID(iid, IID_IAccessible))
        return HandOut(static_cast<IAccessible*>(this), out);
    return E_NOINTERFACE;
}

ULONG StandardAccessible::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT StandardAccessible::GetTypeInfoCount(UINT* count) {
    return m_standard->GetTypeInfoCount(count);
}
HRESULT StandardAccessible::GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) {
    return m_standard->GetTypeInfo(index, locale, info);
}
HRESULT StandardAccessible::GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                          DISPID* ids) {
    return m_standard->GetIDsOfNames(iid, names, count, locale, ids);
}
HRESULT StandardAccessible::get_accParent(IDispatch** parent) {
    return m_standard->get_accParent(parent);
}
HRESULT StandardAccessible::get_accChildCount(long* count) {
    return m_standard->get_accChildCount(count);
}
HRESULT StandardAccessible::get_accChild(VARIANT self, IDispatch** child) {
    return m_standard->get_accChild(self, child);
}
HRESULT StandardAccessible::get_accName(VARIANT self, BSTR* name) {
    return m_standard->get_accName(self, name);
}
HRESULT StandardAccessible::get_accValue(VARIANT self, BSTR* value) {
    return m_standard->get_accValue(self, value);
}
HRESULT StandardAccessible::get_accDescription(VARIANT self, BSTR* description) {
    return m_standard->get_accDescription(self, description);
}
HRESULT StandardAccessible::get_accRole(VARIANT self, VARIANT* role) {
    return m_standard->get_accRole(self, role);
}
HRESULT StandardAccessible::get_accState(VARIANT self, VARIANT* state) {
    return m_standard->get_accState(self, state);
}
HRESULT StandardAccessible::get_accHelp(VARIANT self, BSTR* help) {
    return m_standard->get_accHelp(self, help);
}
HRESULT StandardAccessible::get_accHelpTopic(BSTR* file, VARIANT self, long* topic) {
    return m_standard->get_accHelpTopic(file, self, topic);
}
HRESULT StandardAccessible::get_accKeyboardShortcut(VARIANT self, BSTR* shortcut) {
    return m_standard->get_accKeyboardShortcut(self, shortcut);
}
HRESULT StandardAccessible::get_accFocus(VARIANT* child) {
    return m_standard->get_accFocus(child);
}
HRESULT StandardAccessible::get_accSelection(VARIANT* children) {
    return m_standard->get_accSelection(children);
}
HRESULT StandardAccessible::get_accDefaultAction(VARIANT self, BSTR* action) {
    return m_standard->get_accDefaultAction(self, action);
}
HRESULT StandardAccessible::accSelect(long flags, VARIANT self) {
    return m_standard->accSelect(flags, self);
}
HRESULT StandardAccessible::accLocation(long* left, long* top, long* width, long* height,
                                        VARIANT self) {
    return m_standard->accLocation(left, top, width, height, self);
}
HRESULT StandardAccessible::accNavigate(long direction, VARIANT start, VARIANT* end) {
    return m_standard->accNavigate(direction, start, end);
}
HRESULT StandardAccessible::accHitTest(long left, long top, VARIANT* child) {
    return m_standard->accHitTest(left, top, child);
}
HRESULT StandardAccessible::accDoDefaultAction(VARIANT self) {
    return m_standard->accDoDefaultAction(self);
}

LRESULT AnswerWith(IAccessible* created, WPARAM wParam) {
    const auto object = ComPtr<IAccessible>::Attach(created);
    return LresultFromObject(IID_IAccessible, wParam, object.Get());
}

LRESULT AccessibleByName(HWND window, WPARAM wParam, std::wstring name) {
    return AnswerWith(new NamedAccessible(window, std::move(name)), wParam);
}

} // namespace qx::com
