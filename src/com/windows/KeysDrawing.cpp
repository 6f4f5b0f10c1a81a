#include "com/windows/KeysDrawing.h"

#include "com/windows/FaceDrawing.h"

#include <algorithm>
#include <cmath>

namespace qx::com {
namespace {

constexpr int kLeastFont = 6; // pixels

COLORREF ColourOf(const KeyCap& key, const KeysLook& look) {
    COLORREF colour = GetSysColor(COLOR_BTNFACE);
    if (!look.isHighContrast)
        OleTranslateColor(static_cast<OLE_COLOR>(key.color), nullptr, &colour);
    return colour;
}

// Black or white, whichever is more legible.
COLORREF TextOn(COLORREF colour) {
    const int light = GetRValue(colour) * 299 + GetGValue(colour) * 587 + GetBValue(colour) * 114;
    return light >= 128'000 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

struct Extent {
    Single left = 0, top = 0, right = 0, bottom = 0;
};

Extent ExtentOf(const std::vector<KeyCap>& keys) {
    if (keys.empty())
        return {};
    Extent whole{keys[0].left, keys[0].top, 0, 0};
    for (const KeyCap& key : keys) {
        whole.left = std::min(whole.left, key.left);
        whole.top = std::min(whole.top, key.top);
        whole.right = std::max(whole.right, key.left + key.width);
        whole.bottom = std::max(whole.bottom, key.top + key.height);
    }
    return whole;
}

// The median height, which is that of a plain key; some keys are higher.
int PlainHeight(const std::vector<RECT>& places) {
    std::vector<int> heights;
    for (const RECT& place : places)
        heights.push_back(place.bottom - place.top);
    if (heights.empty())
        return 0;
    const auto middle = heights.begin() + static_cast<std::ptrdiff_t>(heights.size() / 2);
    std::ranges::nth_element(heights, middle);
    return *middle;
}

HFONT FontOfHeight(HFONT like, int height, bool isBold = false) {
    LOGFONTW wanted{};
    GetObjectW(like, sizeof(wanted), &wanted);
    wanted.lfHeight = -height;
    wanted.lfWidth = 0;
    if (isBold)
        wanted.lfWeight = FW_BOLD;
    return CreateFontIndirectW(&wanted);
}

int HeightOf(HFONT font) {
    LOGFONTW of{};
    GetObjectW(font, sizeof(of), &of);
    return std::abs(static_cast<int>(of.lfHeight));
}

// In proportion to the keys, at most the face's own size; then multiplied by the key's text scale.
HFONT KeyFont(HFONT face, int keyHeight, const KeyCap& key) {
    const auto usual = static_cast<Single>(std::min(keyHeight * 2 / 5, HeightOf(face)));
    const auto most = static_cast<Single>(std::max(keyHeight, kLeastFont));
    const Single height = std::clamp(usual * key.textScale, static_cast<Single>(kLeastFont), most);
    return FontOfHeight(face, static_cast<int>(std::lround(height)), key.isBold);
}

// The size of the text wrapped to the width; a long word may be wider.
SIZE SizeOf(HDC context, const std::wstring& text, LONG width) {
    RECT needed{0, 0, width, 0};
    DrawTextW(context, text.c_str(), -1, &needed, DT_WORDBREAK | DT_NOPREFIX | DT_CALCRECT);
    return {needed.right, needed.bottom};
}

// Breaks "NumLock", "Num7" and "Num+" into two lines each.
std::wstring InLines(const std::wstring& text) {
    std::wstring lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool mayBegin = IsCharAlphaNumericW(text[i]) != FALSE || i + 1 == text.size();
        if (i > 0 && mayBegin && IsCharLowerW(text[i - 1]) != FALSE &&
            IsCharLowerW(text[i]) == FALSE && text[i] != L'\n')
            lines += L'\n';
        lines += text[i];
    }
    return lines;
}

// A caption that does not fit is broken into lines, then drawn smaller, down to the smallest
// legible size.
void DrawCaption(HDC context, RECT area, const std::string& caption) {
    std::wstring text = WideFromUtf8(caption);
    const LONG width = area.right - area.left;
    const LONG height = area.bottom - area.top;
    const auto font = static_cast<HFONT>(GetCurrentObject(context, OBJ_FONT));
    SIZE size = SizeOf(context, text, width);
    if (size.cx > width) {
        text = InLines(text);
        size = SizeOf(context, text, width);
    }
    for (int smaller = HeightOf(font);
         (size.cx > width || size.cy > height) && --smaller >= kLeastFont;
         size = SizeOf(context, text, width)) {
        const HGDIOBJ earlier = SelectObject(context, FontOfHeight(font, smaller));
        if (earlier != font)
            DeleteObject(earlier);
    }
    area.top += std::max((height - size.cy) / 2, 0L);
    DrawTextW(context, text.c_str(), -1, &area,
              DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS);
    const HGDIOBJ last = SelectObject(context, font);
    if (last != font)
        DeleteObject(last);
}

// Lines and marks are sized for a key of the usual height, whatever this key's height.
void DrawKey(HDC context, RECT place, const KeyCap& key, const KeysLook& look, int height) {
    const bool marksCurrent = look.isHighContrast && key.isCurrent;
    const COLORREF colour = marksCurrent ? GetSysColor(COLOR_HIGHLIGHT) : ColourOf(key, look);
    COLORREF text = TextOn(colour);
    if (look.isHighContrast)
        text = GetSysColor(key.isCurrent   ? COLOR_HIGHLIGHTTEXT
                           : key.isEnabled ? COLOR_BTNTEXT
                                           : COLOR_GRAYTEXT);
    const int line = std::max(height / 24, 1);
    const HBRUSH brush = CreateSolidBrush(colour);
    const HPEN pen =
        CreatePen(PS_INSIDEFRAME, key.isCurrent ? 2 * line : line,
                  key.isCurrent ? GetSysColor(COLOR_HIGHLIGHT) : GetSysColor(COLOR_BTNSHADOW));
    const HGDIOBJ earlierBrush = SelectObject(context, brush);
    const HGDIOBJ earlierPen = SelectObject(context, pen);
    const int round = std::max(height / 8, 2);
    RoundRect(context, place.left, place.top, place.right, place.bottom, round, round);
    if (key.isProgrammed) { // a mark in the upper right corner
        const int size = std::max(height / 5, 3);
        const int inset = 4 * line;
        const POINT corner[] = {{place.right - inset, place.top + inset},
                                {place.right - inset - size, place.top + inset},
                                {place.right - inset, place.top + inset + size}};
        const HBRUSH mark = CreateSolidBrush(text);
        SelectObject(context, mark);
        SelectObject(context, GetStockObject(NULL_PEN));
        Polygon(context, corner, 3);
        SelectObject(context, brush);
        DeleteObject(mark);
    }
    SelectObject(context, earlierPen);
    SelectObject(context, earlierBrush);
    DeleteObject(pen);
    DeleteObject(brush);

    InflateRect(&place, -2 * line, -2 * line);
    if (key.index == look.pressed)
        OffsetRect(&place, line, line);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, text);
    const HFONT font = KeyFont(look.font, height, key);
    const HGDIOBJ earlierFont = SelectObject(context, font);
    DrawCaption(context, place, key.caption);
    SelectObject(context, earlierFont);
    DeleteObject(font);
    if (key.index == look.focus) {
        SetTextColor(context, RGB(0, 0, 0)); // DrawFocusRect inverts with these
        SetBkColor(context, RGB(255, 255, 255));
        InflateRect(&place, -line, -line);
        DrawFocusRect(context, &place);
    }
}

} // namespace

int HeightOfKeys(const std::vector<KeyCap>& keys, int width) {
    const Extent whole = ExtentOf(keys);
    return static_cast<int>(std::lround(static_cast<Single>(width) * (whole.bottom - whole.top) /
                                        std::max(whole.right - whole.left, 1.0F)));
}

std::vector<RECT> PlacesOf(const std::vector<KeyCap>& keys, const RECT& area) {
    const auto [left, top, right, bottom] = ExtentOf(keys);
    const auto width = static_cast<Single>(area.right - area.left);
    const auto height = static_cast<Single>(area.bottom - area.top);
    const Single scale =
        std::min(width / std::max(right - left, 1.0F), height / std::max(bottom - top, 1.0F));
    const Single x0 = static_cast<Single>(area.left) + (width - (right - left) * scale) / 2;
    const Single y0 = static_cast<Single>(area.top) + (height - (bottom - top) * scale) / 2;
    const auto x = [&](Single at) { return std::lround(x0 + (at - left) * scale); };
    const auto y = [&](Single at) { return std::lround(y0 + (at - top) * scale); };
    std::vector<RECT> places;
    for (const KeyCap& key : keys)
        places.push_back(
            {x(key.left), y(key.top), x(key.left + key.width), y(key.top + key.height)});
    return places;
}

void DrawKeys(HDC context, const RECT& area, const PartState& state, const KeysLook& look) {
    const std::vector<RECT> places = PlacesOf(state.keys, area);
    if (places.empty()) { // no layout yet
        RECT whole = area;
        const HGDIOBJ earlier = SelectObject(context, look.font);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, GetSysColor(COLOR_GRAYTEXT));
        DrawEdge(context, &whole, EDGE_ETCHED, BF_RECT);
        DrawTextW(context, WideFromUtf8(state.name).c_str(), -1, &whole,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
        SelectObject(context, earlier);
        return;
    }
    const int height = PlainHeight(places);
    for (std::size_t i = 0; i < places.size(); ++i)
        DrawKey(context, places[i], state.keys[i], look, height);
}

} // namespace qx::com
