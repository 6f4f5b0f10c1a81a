#include "com/windows/NativeParts.h"

#include "com/windows/KeysWindow.h"
#include "com/windows/Server.h"
#include "com/windows/StandardAccessible.h"
#include "qxcontrols/common/Utf.h"

#include <commctrl.h>

#include <algorithm>

namespace qx::com {
namespace {

struct NativeKind {
    const wchar_t* windowClass;
    DWORD style;
    DWORD extendedStyle = 0;
};

NativeKind NativeKindOf(PartKind kind) {
    switch (kind) {
    case PartKind::Sequence: // a field, so that it wraps, scrolls and can be copied from
        return {L"EDIT", WS_TABSTOP | ES_MULTILINE | ES_READONLY | ES_AUTOVSCROLL,
                WS_EX_CLIENTEDGE};
    case PartKind::CheckBox:
        return {L"BUTTON", WS_TABSTOP | BS_CHECKBOX};
    case PartKind::Button:
        return {L"BUTTON", WS_TABSTOP | BS_PUSHBUTTON};
    case PartKind::Slider:
        return {TRACKBAR_CLASSW, WS_TABSTOP | TBS_HORZ | TBS_NOTICKS};
    case PartKind::List:
        return {L"LISTBOX", WS_TABSTOP | WS_VSCROLL | LBS_NOTIFY | LBS_NOINTEGRALHEIGHT,
                WS_EX_CLIENTEDGE};
    case PartKind::Edit:
        return {L"EDIT", WS_TABSTOP | ES_AUTOHSCROLL, WS_EX_CLIENTEDGE};
    default:
        return {L"STATIC", SS_LEFT};
    }
}

std::wstring TextOfWindow(HWND window) {
    std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void ShowText(HWND window, const std::string& text) {
    const std::wstring wide = WideFromUtf8(text);
    if (TextOfWindow(window) != wide) // setting an equal text would move the caret
        SetWindowTextW(window, wide.c_str());
}

void ShowSlider(HWND window, const PartState& state) {
    SendMessageW(window, TBM_SETRANGEMIN, FALSE, state.min);
    SendMessageW(window, TBM_SETRANGEMAX, FALSE, state.max);
    if (SendMessageW(window, TBM_GETPOS, 0, 0) != state.value)
        SendMessageW(window, TBM_SETPOS, TRUE, state.value);
}

bool HasItems(HWND list, const std::vector<std::string>& items) {
    if (SendMessageW(list, LB_GETCOUNT, 0, 0) != static_cast<LRESULT>(items.size()))
        return false;
    for (std::size_t row = 0; row < items.size(); ++row) {
        const LRESULT length = SendMessageW(list, LB_GETTEXTLEN, row, 0);
        std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(length, 0)) + 1, L'\0');
        SendMessageW(list, LB_GETTEXT, row, reinterpret_cast<LPARAM>(text.data()));
        text.pop_back();
        if (text != WideFromUtf8(items[row]))
            return false;
    }
    return true;
}

void ShowList(HWND window, const PartState& state) {
    if (!HasItems(window, state.items)) {
        SendMessageW(window, LB_RESETCONTENT, 0, 0);
        for (const std::string& item : state.items)
            SendMessageW(window, LB_ADDSTRING, 0,
                         reinterpret_cast<LPARAM>(WideFromUtf8(item).c_str()));
    }
    if (SendMessageW(window, LB_GETCURSEL, 0, 0) != state.value)
        SendMessageW(window, LB_SETCURSEL, static_cast<WPARAM>(state.value), 0);
}

// Keys that move the focus, modifier keys and shortcuts are not for the sequence.
bool IsForSequence(WPARAM key) {
    const bool isControl = GetKeyState(VK_CONTROL) < 0;
    const bool isAlt = GetKeyState(VK_MENU) < 0; // Ctrl and Alt together type a character
    return isControl == isAlt && key != VK_TAB && key != VK_SHIFT && key != VK_CONTROL &&
           key != VK_MENU && key != VK_LWIN && key != VK_RWIN && key != VK_CAPITAL;
}

// For a button whose accessible name differs from its text. The part outlives its window.
LRESULT CALLBACK OnNamedMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                UINT_PTR id, DWORD_PTR data) {
    const auto* const part = reinterpret_cast<const Part*>(data);
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, OnNamedMessage, id);
    LRESULT answer = 0;
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT &&
        SUCCEEDED(Guarded([&] {
            answer = AccessibleByName(window, wParam, WideFromUtf8(part->state.name));
            return S_OK;
        })))
        return answer;
    return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK OnSequenceMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR) {
    switch (message) {
    case WM_GETDLGCODE: // all keys except those that leave the control
        return DLGC_WANTCHARS | DLGC_WANTARROWS;
    case WM_KEYDOWN:
        if (IsForSequence(wParam))
            SendMessageW(GetParent(window), kSequenceKey, id, static_cast<LPARAM>(wParam));
        if (IsWindow(window) == FALSE)
            return 0;
        break;
    case WM_CHAR:
        if (wParam == VK_TAB || wParam == VK_ESCAPE ||
            (wParam < L' ' && wParam != VK_RETURN && wParam != VK_BACK))
            break;
        SendMessageW(GetParent(window), kSequenceType, id, 0);
        return 0;
    case WM_NCDESTROY:
        RemoveWindowSubclass(window, OnSequenceMessage, id);
        break;
    default:
        break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace

HWND NewWindow(const Part& part, HWND parent, int id) {
    if (part.kind == PartKind::Keys)
        return KeysWindow::Create(parent, id);
    const NativeKind kind = NativeKindOf(part.kind);
    const HWND window =
        CreateWindowExW(kind.extendedStyle, kind.windowClass, WideFromUtf8(part.state.name).c_str(),
                        WS_CHILD | WS_CLIPSIBLINGS | kind.style, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), Module(), nullptr);
    if (window != nullptr && part.kind == PartKind::Sequence)
        SetWindowSubclass(window, OnSequenceMessage, static_cast<UINT_PTR>(id), 0);
    if (window != nullptr && part.kind == PartKind::Button && !part.state.name.empty())
        SetWindowSubclass(window, OnNamedMessage, static_cast<UINT_PTR>(id),
                          reinterpret_cast<DWORD_PTR>(&part));
    return window;
}

void ShowState(HWND window, const Part& part, bool reacts) {
    const PartState& state = part.state;
    switch (part.kind) {
    case PartKind::CheckBox:
        ShowText(window, state.text);
        SendMessageW(window, BM_SETCHECK, state.value == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
        break;
    case PartKind::Slider:
        ShowText(window, state.name);
        ShowSlider(window, state);
        break;
    case PartKind::List:
        ShowText(window, state.name);
        ShowList(window, state);
        break;
    case PartKind::Keys:
        ShowText(window, state.name);
        break;
    default:
        ShowText(window, state.text);
    }
    const BOOL isEnabled = state.isEnabled && reacts ? TRUE : FALSE;
    if (IsWindowEnabled(window) != isEnabled)
        EnableWindow(window, isEnabled);
}

bool ReadInput(HWND window, const Part& part, UINT notification, PartInput& input) {
    switch (part.kind) {
    case PartKind::Button:
        return notification == BN_CLICKED;
    case PartKind::CheckBox:
        input.value = part.state.value == 1 ? 0 : 1;
        return notification == BN_CLICKED;
    case PartKind::List:
        input.value = static_cast<Integer>(SendMessageW(window, LB_GETCURSEL, 0, 0));
        return notification == LBN_SELCHANGE && input.value >= 0;
    case PartKind::Edit: {
        const std::wstring text = TextOfWindow(window);
        input.text = Utf8FromUtf16({reinterpret_cast<const char16_t*>(text.data()), text.size()});
        return notification == EN_CHANGE && input.text != part.state.text;
    }
    case PartKind::Slider: // whichever way it was moved
        input.value = static_cast<Integer>(SendMessageW(window, TBM_GETPOS, 0, 0));
        return input.value != part.state.value;
    default:
        return false;
    }
}

} // namespace qx::com
