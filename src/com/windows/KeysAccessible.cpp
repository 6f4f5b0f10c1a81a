#include "com/windows/KeysAccessible.h"

#include "com/windows/KeysWindow.h"
#include "com/windows/StandardAccessible.h"

namespace qx::com {
namespace {

// Stays valid while a client holds it, but answers nothing once the window is gone. The window's
// standard object answers everything that is not specific to keys.
class KeysObject : public StandardAccessible {
public:
    explicit KeysObject(HWND window) : StandardAccessible(window) {}

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
        return S_FALSE; // clients reach the keys through this object
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT self, BSTR* name) override {
        return WithText(self, name, [](const PartState& all, const KeyCap* key) {
            return key == nullptr ? all.name : key->name;
        });
    }
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
            const bool hasFocus = GetFocus() == Window() && keys.FocusRow() == row;
            return STATE_SYSTEM_FOCUSABLE | (hasFocus ? STATE_SYSTEM_FOCUSED : 0) |
                   (key.isCurrent ? STATE_SYSTEM_PRESSED : 0);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override {
        const KeysWindow* const keys = Keys();
        if (child == nullptr || keys == nullptr)
            return E_FAIL;
        VariantInit(child);
        if (GetFocus() != Window())
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
            GetClientRect(Window(), &place);
        else
            place = keys->Places()[static_cast<std::size_t>(row)];
        POINT corner{place.left, place.top};
        ClientToScreen(Window(), &corner);
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
        ScreenToClient(Window(), &point);
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

private:
    [[nodiscard]] KeysWindow* Keys() const { return KeysWindow::Of(Window()); }

    // The keyboard if `self` is the keyboard itself (row -1) or one of its keys.
    [[nodiscard]] KeysWindow* KeysWith(const VARIANT& self, int& row) const {
        KeysWindow* const keys = Keys();
        if (keys == nullptr || V_VT(&self) != VT_I4 || V_I4(&self) < 0 ||
            V_I4(&self) > static_cast<LONG>(keys->Shown().keys.size()))
            return nullptr;
        row = static_cast<int>(V_I4(&self)) - 1;
        return keys;
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
};

} // namespace

LRESULT AccessibleKeys(HWND window, WPARAM wParam) {
    return AnswerWith(new KeysObject(window), wParam);
}

} // namespace qx::com
