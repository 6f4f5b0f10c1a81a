#include "com/windows/PartsFace.h"

#include "com/windows/KeysWindow.h"
#include "com/windows/NativeParts.h"
#include "com/windows/Server.h"

#include <commctrl.h>

#include <algorithm>

namespace qx::com {
namespace {

constexpr int kFirstId = 100;

// Leaves a margin of half the usual gap between parts.
Place Inside(const RECT& bounds, const FontMeasures& measures) {
    const int edge = measures.Gap();
    return {bounds.left + edge, bounds.top + edge,
            std::max<int>(bounds.right - bounds.left - 2 * edge, 0),
            std::max<int>(bounds.bottom - bounds.top - 2 * edge, 0)};
}

} // namespace

PartsFace::PartsFace(Object* object, FaceTable table, std::function<void()> changed)
    : m_object(object), m_table(std::move(table)), m_changed(std::move(changed)),
      m_subscriptions(m_table.subscribe(
          {[this] { Refreshed(); }, [this](std::string_view id) { TakeFocus(id); }})) {}

PartsFace::~PartsFace() {
    PartsFace::Close();
}

void PartsFace::Draw(HDC context, const RECT& bounds, const Ambient& ambient) {
    const FaceFont font(ambient);
    const FaceColours colours(ambient);
    const FontMeasures measures(font.Get());
    FillArea(context, bounds, colours.background);
    const HGDIOBJ earlier = SelectObject(context, font.Get());
    for (const PlacedPart& placed : Arranged(m_table.root, Inside(bounds, measures), measures)) {
        if (m_window == nullptr)
            DrawPart(context, placed, measures, colours, font.Get());
        else if (placed.part->kind == PartKind::Frame)
            DrawFrame(context, RectOf(placed.place), measures);
    }
    SelectObject(context, earlier);
}

void PartsFace::Open(HWND window, const Ambient& ambient) {
    if (!ambient.isUserMode)
        return;
    INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_BAR_CLASSES};
    InitCommonControlsEx(&controls);
    m_window = window;
    MakeChildren(m_table.root);
    MakeToolTips();
    Arrange(ambient);
    if (m_table.shown)
        RunAction(m_table.shown);
}

void PartsFace::MakeChildren(Part& part) {
    if (part.now) {
        const int id = kFirstId + static_cast<int>(m_children.size());
        const HWND child = NewWindow(part, m_window, id);
        if (child != nullptr)
            m_children.push_back({&part, child});
    }
    for (Part& inner : part.parts)
        MakeChildren(inner);
}

void PartsFace::MakeToolTips() {
    m_toolTips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                                 WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0, m_window,
                                 nullptr, Module(), nullptr);
    for (const Child& child : m_children) {
        TTTOOLINFOW tool{};
        tool.cbSize = sizeof(tool);
        tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
        tool.hwnd = m_window;
        tool.uId = reinterpret_cast<UINT_PTR>(child.window);
        wchar_t none[] = L"";
        tool.lpszText = none;
        if (child.part->kind == PartKind::Button)
            SendMessageW(m_toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    }
}

void PartsFace::Close() {
    if (m_toolTips != nullptr)
        DestroyWindow(m_toolTips);
    m_toolTips = nullptr;
    m_window = nullptr;
    m_children.clear(); // their windows go with the control's window
    m_font.reset();
    m_colours.reset();
    if (m_brush != nullptr)
        DeleteObject(m_brush);
    m_brush = nullptr;
}

void PartsFace::Arrange(const Ambient& ambient) {
    if (m_window == nullptr)
        return;
    m_reacts = !ambient.isDead;
    m_colours.emplace(ambient);
    if (m_brush != nullptr)
        DeleteObject(m_brush);
    m_brush = CreateSolidBrush(m_colours->background);
    const auto earlier = std::exchange(m_font, std::make_unique<FaceFont>(ambient)); // still in use
    for (const Child& child : m_children) {
        SendMessageW(child.window, WM_SETFONT, reinterpret_cast<WPARAM>(m_font->Get()), TRUE);
        SendMessageW(child.window, WM_SYSCOLORCHANGE, 0, 0); // sliders cache their background
    }
    ShowAll();
    RedrawAll();
}

void PartsFace::Refreshed() {
    ShowAll();
    m_changed();
}

// Refreshed is raised in the middle of the control's work, which must not be aborted because a text
// cannot be shown.
void PartsFace::ShowAll() {
    const HRESULT refreshed = Guarded([&] {
        Refresh(m_table.root);
        return S_OK;
    });
    if (FAILED(refreshed) || m_window == nullptr || m_isShowing || !m_font)
        return;
    m_isShowing = true;
    static_cast<void>(Guarded([&] {
        for (const Child& child : m_children) {
            ShowState(child.window, *child.part, m_reacts);
            ShowToolTip(child);
            if (auto* const keys = KeysWindow::Of(child.window))
                keys->Show(child.part->state, m_font->Get(), *m_colours);
        }
        PlaceChildren();
        return S_OK;
    }));
    m_isShowing = false;
}

void PartsFace::ShowToolTip(const Child& child) {
    if (child.part->kind != PartKind::Button)
        return;
    std::wstring text = WideFromUtf8(child.part->state.toolTip);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.hwnd = m_window;
    tool.uId = reinterpret_cast<UINT_PTR>(child.window);
    tool.lpszText = text.data();
    SendMessageW(m_toolTips, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

// Child windows are moved without copying their pixels: neighbours may have covered part of them.
void PartsFace::PlaceChildren() {
    const FontMeasures measures(m_font->Get());
    RECT bounds{};
    GetClientRect(m_window, &bounds);
    const auto placed = Arranged(m_table.root, Inside(bounds, measures), measures);
    bool hasMoved = false;
    for (const Child& child : m_children) {
        const auto found = std::ranges::find(placed, child.part, &PlacedPart::part);
        const bool isVisible = (GetWindowLongPtrW(child.window, GWL_STYLE) & WS_VISIBLE) != 0;
        if (found == placed.end()) {
            if (isVisible)
                ShowWindow(child.window, SW_HIDE);
            continue;
        }
        const RECT area =
            child.part->kind == PartKind::Frame ? TitleOf(*found, measures) : RectOf(found->place);
        RECT earlier{};
        GetWindowRect(child.window, &earlier);
        MapWindowPoints(nullptr, m_window, reinterpret_cast<POINT*>(&earlier), 2);
        if (isVisible && EqualRect(&area, &earlier) != FALSE)
            continue;
        SetWindowPos(child.window, nullptr, area.left, area.top, area.right - area.left,
                     area.bottom - area.top,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS | SWP_SHOWWINDOW);
        hasMoved = true;
    }
    if (hasMoved)
        RedrawAll();
}

void PartsFace::RedrawAll() {
    RedrawWindow(m_window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

PartsFace::Child* PartsFace::ChildOf(WPARAM id) {
    const std::size_t row = static_cast<std::size_t>(id) - kFirstId;
    return row < m_children.size() ? &m_children[row] : nullptr;
}

// A host's sink may release the control during the action, and with it the face and its children.
void PartsFace::RunAction(const std::function<void()>& action) {
    std::optional<Object::InUse> inUse;
    if (m_object != nullptr)
        inUse.emplace(*m_object);
    action();
}

void PartsFace::Act(Part& part, const PartInput& input) {
    if (!part.act)
        return;
    RunAction([&] {
        if (part.take && GetKeyState(VK_CONTROL) < 0)
            part.take(input.value);
        else
            part.act(input);
    });
    ShowAll(); // even if the control has changed nothing
}

// A window that is only deactivated keeps its focus for its return.
void PartsFace::NoteFocus(const Part& part, bool hasCome) {
    if (part.focus && (hasCome || IsChild(m_window, GetFocus()) != FALSE))
        RunAction([&] { part.focus(hasCome); });
}

bool PartsFace::Notify(WPARAM id, UINT notification) {
    const Child* const child = ChildOf(id);
    if (child != nullptr && child->part->kind == PartKind::Edit &&
        (notification == EN_SETFOCUS || notification == EN_KILLFOCUS)) {
        NoteFocus(*child->part, notification == EN_SETFOCUS); // may destroy the children
        return true;
    }
    PartInput input;
    if (child == nullptr || m_isShowing ||
        !ReadInput(child->window, *child->part, notification, input))
        return false;
    Act(*child->part, input);
    return true;
}

bool PartsFace::ColourOf(HDC context, HWND child, LRESULT& result) {
    const auto found = std::ranges::find(m_children, child, &Child::window);
    if (found == m_children.end() || !m_colours || found->part->kind == PartKind::Edit)
        return false;
    const bool isField = found->part->kind == PartKind::Sequence;
    SetTextColor(context, isField ? GetSysColor(COLOR_WINDOWTEXT) : m_colours->text);
    SetBkColor(context, isField ? GetSysColor(COLOR_WINDOW) : m_colours->background);
    result = reinterpret_cast<LRESULT>(isField ? GetSysColorBrush(COLOR_WINDOW) : m_brush);
    return true;
}

bool PartsFace::Handle(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    if (m_window == nullptr)
        return false;
    switch (message) {
    case WM_COMMAND:
        return Notify(LOWORD(wParam), HIWORD(wParam));
    case WM_HSCROLL:
        return lParam != 0 &&
               Notify(static_cast<WPARAM>(GetDlgCtrlID(reinterpret_cast<HWND>(lParam))), 0);
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
        return ColourOf(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam), result);
    case kKeyPicked:
    case kSequenceKey:
        if (Child* const child = ChildOf(wParam))
            Act(*child->part, {static_cast<Integer>(lParam), {}});
        return true;
    case kKeyReached:
        if (Child* const child = ChildOf(wParam); child != nullptr && child->part->reach)
            RunAction([part = child->part, lParam] { part->reach(static_cast<Integer>(lParam)); });
        return true;
    case kSequenceType:
        if (Child* const child = ChildOf(wParam); child != nullptr && child->part->type)
            RunAction(child->part->type);
        return true;
    case WM_SETFOCUS:
        return FocusOn(false);
    default:
        return false;
    }
}

} // namespace qx::com
