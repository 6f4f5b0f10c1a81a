#include "com/windows/KeysAccessible.h"

#include "com/windows/KeysWindow.h"

#include <oleacc.h>

#include <atomic>

namespace qx::com {
namespace {

// Answers for as long as a client holds it, but knows nothing once the window has gone. The
// standard object of the window answers what is not special to keys.
class KeysObject : public IAccessible {
public:
    KeysObject(HWND window, ComPtr<IAccessible> standard)
        : m_window(window), m_standard(std::move(standard)) {}
    virtual ~KeysObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** out) override {
        if (out == nullptr)
            return E_POINTER;
        *out = nullptr;
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
            IsEqualIID(iid, IID_IAccessible))
            return HandOut(static_cast<IAccessible*>(this), out);
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        return m_standard->GetTypeInfoCount(count);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override {
        return m_standard->GetTypeInfo(index, locale, info);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override {
        return m_standard->GetIDsOfNames(iid, names, count, locale, ids);
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL; // clients call the interface itself
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        return m_standard->get_accParent(parent);
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
        const KeysWindow* const keys = Keys();
        if (count == nullptr || keys == nullptr)
            return E_FAIL;
        *count = static_cast<long>(keys->Shown().keys.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT, IDispatch** child) override {
        if (child != nullptr)
            *child = nullptr;
        return S_FALSE; // the keys are asked by way of this object
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT self, BSTR* name) override {
        return WithText(self, name, [](const PartState& all, const KeyCap* key) {
            return key == nullptr ? all.name : key->name;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT, BSTR* value) override { return None(value); }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT self, BSTR* description) override {
        return WithText(self, description, [](const PartState&, const KeyCap* key) {
            return key == nullptr ? std::string() : key->toolTip;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT self, VARIANT* role) override {
        return WithNumber(self, role, [](const KeysWindow&, int row) {
            return row < 0 ? ROLE_SYSTEM_GROUPING : ROLE_SYSTEM_PUSHBUTTON;
        });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT self, VARIANT* state) override {
        return WithNumber(self, state, [this](const KeysWindow& keys, int row) {
            if (row < 0)
                return STATE_SYSTEM_FOCUSABLE;
            const KeyCap& key = keys.Shown().keys[static_cast<std::size_t>(row)];
            if (!key.isEnabled)
                return STATE_SYSTEM_UNAVAILABLE;
            const bool hasFocus = GetFocus() == m_window && keys.FocusRow() == row;
            return STATE_SYSTEM_FOCUSABLE | (hasFocus ? STATE_SYSTEM_FOCUSED : 0) |
                   (key.isCurrent ? STATE_SYSTEM_PRESSED : 0);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* help) override { return None(help); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, long*) override {
        return None(file);
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR* shortcut) override {
        return None(shortcut);
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        const KeysWindow* const keys = Keys();
        if (child == nullptr || keys == nullptr)
            return E_FAIL;
        VariantInit(child);
        if (GetFocus() != m_window)
            return S_FALSE;
        return Answer(child, keys->FocusRow() + 1);
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override {
        if (children != nullptr)
            VariantInit(children);
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT self, BSTR* action) override {
        return WithText(self, action, [](const PartState&, const KeyCap* key) {
            return std::string(key == nullptr ? "" : "Press");
        });
    }
    HRESULT STDMETHODCALLTYPE accSelect(long, VARIANT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT self) override {
        int row = -1;
        const KeysWindow* const keys = KeysWith(self, row);
        if (keys == nullptr || left == nullptr || top == nullptr || width == nullptr ||
            height == nullptr)
            return E_INVALIDARG;
        RECT place{};
        if (row < 0)
            GetClientRect(m_window, &place);
        else
            place = keys->Places()[static_cast<std::size_t>(row)];
        POINT corner{place.left, place.top};
        ClientToScreen(m_window, &corner);
        *left = corner.x;
        *top = corner.y;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long, VARIANT, VARIANT* end) override {
        if (end != nullptr)
            VariantInit(end);
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override {
        const KeysWindow* const keys = Keys();
        if (child == nullptr || keys == nullptr)
            return E_FAIL;
        POINT point{left, top};
        ScreenToClient(m_window, &point);
        return Answer(child, keys->RowAt(point) + 1);
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT self) override {
        int row = -1;
        KeysWindow* const keys = KeysWith(self, row);
        if (keys == nullptr || row < 0)
            return E_INVALIDARG;
        return Guarded([&] {
            keys->Pick(row);
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return E_NOTIMPL; }

private:
    [[nodiscard]] KeysWindow* Keys() const { return KeysWindow::Of(m_window); }

    // The keyboard when `self` is itself (a row of -1) or one of its keys.
    [[nodiscard]] KeysWindow* KeysWith(const VARIANT& self, int& row) const {
        KeysWindow* const keys = Keys();
        if (keys == nullptr || V_VT(&self) != VT_I4 || V_I4(&self) < 0 ||
            V_I4(&self) > static_cast<LONG>(keys->Shown().keys.size()))
            return nullptr;
        row = static_cast<int>(V_I4(&self)) - 1;
        return keys;
    }

    static HRESULT None(BSTR* text) {
        if (text != nullptr)
            *text = nullptr;
        return S_FALSE;
    }

    static HRESULT Answer(VARIANT* answer, int number) {
        V_VT(answer) = VT_I4;
        V_I4(answer) = number;
        return S_OK;
    }

    template <typename Text>
    HRESULT WithText(const VARIANT& self, BSTR* out, Text text) const {
        int row = -1;
        const KeysWindow* const keys = KeysWith(self, row);
        if (out == nullptr || keys == nullptr)
            return E_INVALIDARG;
        return Guarded([&] {
            const PartState& all = keys->Shown();
            const std::wstring wide = WideFromUtf8(
                text(all, row < 0 ? nullptr : &all.keys[static_cast<std::size_t>(row)]));
            *out = nullptr;
            if (wide.empty())
                return S_FALSE;
            *out = SysAllocString(wide.c_str());
            return *out == nullptr ? E_OUTOFMEMORY : S_OK;
        });
    }

    template <typename Number>
    HRESULT WithNumber(const VARIANT& self, VARIANT* out, Number number) const {
        int row = -1;
        const KeysWindow* const keys = KeysWith(self, row);
        if (out == nullptr || keys == nullptr)
            return E_INVALIDARG;
        return Answer(out, number(*keys, row));
    }

    const HWND m_window;
    const ComPtr<IAccessible> m_standard;
    std::atomic<ULONG> m_references = 1;
};

} // namespace

LRESULT AccessibleKeys(HWND window, WPARAM wParam) {
    ComPtr<IAccessible> standard;
    if (FAILED(CreateStdAccessibleObject(window, OBJID_CLIENT, IID_IAccessible,
                                         reinterpret_cast<void**>(standard.Out()))))
        return 0;
    const auto object = ComPtr<IAccessible>::Attach(new KeysObject(window, std::move(standard)));
    return LresultFromObject(IID_IAccessible, wParam, object.Get());
}

} // namespace qx::com
