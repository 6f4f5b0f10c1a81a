// The keyboard handling of PartsFace: the focus among its children, Tab, Enter and mnemonics.
#include "com/windows/PartsFace.h"

#include <algorithm>
#include <cwctype>

namespace qx::com {
namespace {

// The letter after the mark in a caption, in upper case; 0 if there is none.
wchar_t MnemonicIn(const Part& part) {
    if (part.kind != PartKind::Label && part.kind != PartKind::Frame &&
        part.kind != PartKind::CheckBox && part.kind != PartKind::Button)
        return 0;
    const std::wstring text = WideFromUtf8(part.state.text);
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == L'&' && text[++i] != L'&')
            return static_cast<wchar_t>(std::towupper(text[i]));
    return 0;
}

bool CanHaveFocus(HWND window) {
    return IsWindowVisible(window) != FALSE && IsWindowEnabled(window) != FALSE &&
           (GetWindowLongPtrW(window, GWL_STYLE) & WS_TABSTOP) != 0;
}

} // namespace

std::vector<HWND> PartsFace::TabStops() const {
    std::vector<HWND> stops;
    for (const Child& child : m_children)
        if (CanHaveFocus(child.window))
            stops.push_back(child.window);
    return stops;
}

bool PartsFace::FocusOn(bool isLast) {
    const std::vector<HWND> stops = TabStops();
    if (stops.empty())
        return false;
    SetFocus(isLast ? stops.back() : stops.front());
    return true;
}

// Handles Tab within the control; at its ends, the container moves the focus.
bool PartsFace::TakesTab() {
    const bool isBack = GetKeyState(VK_SHIFT) < 0;
    std::vector<HWND> stops = TabStops();
    if (isBack)
        std::ranges::reverse(stops);
    const auto at = std::ranges::find(stops, GetFocus());
    if (at == stops.end() || at + 1 == stops.end())
        return false;
    SetFocus(*(at + 1));
    return true;
}

// In other parts, Enter belongs to the container.
bool PartsFace::TakesEnter(MSG& message) {
    const auto child = std::ranges::find(m_children, message.hwnd, &Child::window);
    if (child == m_children.end())
        return false;
    const Part& part = *child->part;
    if (part.enter) {
        RunAction(part.enter);
        return true;
    }
    if (part.kind == PartKind::Button) {
        SendMessageW(message.hwnd, BM_CLICK, 0, 0);
        return true;
    }
    if (part.kind != PartKind::Keys && part.kind != PartKind::Sequence)
        return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
    return true;
}

bool PartsFace::TakesKey(MSG& message) {
    if (m_window == nullptr || !m_reacts || IsChild(m_window, message.hwnd) == FALSE)
        return false;
    if (message.message == WM_SYSCHAR)
        return TakesMnemonic(static_cast<wchar_t>(message.wParam));
    if (message.message != WM_KEYDOWN)
        return false;
    if (message.wParam == VK_TAB)
        return TakesTab();
    if (message.wParam == VK_RETURN)
        return TakesEnter(message);
    if (message.wParam < VK_PRIOR || message.wParam > VK_DOWN)
        return false;
    TranslateMessage(&message); // arrows and similar keys, which containers would consume
    DispatchMessageW(&message);
    return true;
}

std::wstring PartsFace::Mnemonics() const {
    std::wstring letters;
    for (const Child& child : m_children)
        if (const wchar_t letter = MnemonicIn(*child.part);
            letter != 0 && child.part->state.isVisible)
            letters += letter;
    return letters;
}

bool PartsFace::TakesMnemonic(wchar_t letter) {
    const auto wanted = static_cast<wchar_t>(std::towupper(letter));
    const auto marked = std::ranges::find_if(m_children, [&](const Child& child) {
        return IsWindowVisible(child.window) != FALSE && MnemonicIn(*child.part) == wanted;
    });
    const auto next = std::find_if(marked, m_children.end(),
                                   [](const Child& child) { return CanHaveFocus(child.window); });
    if (next == m_children.end())
        return false;
    SetFocus(next->window);
    if (next == marked)
        SendMessageW(next->window, BM_CLICK, 0, 0); // may destroy the children
    return true;
}

void PartsFace::TakeFocus(std::string_view id) {
    for (const Child& child : m_children)
        if (child.part->id == id && CanHaveFocus(child.window) && GetFocus() != child.window) {
            SetFocus(child.window);
            return;
        }
}

} // namespace qx::com
