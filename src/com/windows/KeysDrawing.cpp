#include "com/windows/KeysDrawing.h"

#include "com/windows/FaceDrawing.h"

#include <algorithm>
#include <cmath>

namespace qx::com {
namespace {

COLORREF ColourOf(const KeyCap& key, const KeysLook& look) {
    COLORREF colour = GetSysColor(COLOR_BTNFACE);
    if (!look.isHighContrast)
        OleTranslateColor(static_cast<OLE_COLOR>(key.color), nullptr, &colour);
    return colour;
}

// Black or white, whichever reads better.
COLORREF TextOn(COLORREF colour) {
    const int light = GetRValue(colour) * 299 + GetGValue(colour) * 587 + GetBValue(colour) * 114;
    return light >= 128'000 ? RGB(0, 0, 0) : RGB(255, 255, 255);
}

// The heights of the keys differ; most have that of a plain key.
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

HFONT KeyFont(HFONT face, int keyHeight) {
    LOGFONTW wanted{};
    GetObjectW(face, sizeof(wanted), &wanted);
    const int own = std::abs(static_cast<int>(wanted.lfHeight));
    wanted.lfHeight = -std::clamp(keyHeight * 3 / 10, 6, std::max(own, 6));
    wanted.lfWidth = 0;
    return CreateFontIndirectW(&wanted);
}

void DrawCaption(HDC context, RECT area, const std::string& caption) {
    const std::wstring text = WideFromUtf8(caption);
    constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_END_ELLIPSIS;
    RECT needed = area;
    DrawTextW(context, text.c_str(), -1, &needed, kFormat | DT_CALCRECT);
    const int spare = (area.bottom - area.top) - (needed.bottom - needed.top);
    area.top += std::max(spare / 2, 0);
    DrawTextW(context, text.c_str(), -1, &area, kFormat);
}

void DrawKey(HDC context, RECT place, const KeyCap& key, const KeysLook& look) {
    const bool marksCurrent = look.isHighContrast && key.isCurrent;
    const COLORREF colour = marksCurrent ? GetSysColor(COLOR_HIGHLIGHT) : ColourOf(key, look);
    COLORREF text = TextOn(colour);
    if (look.isHighContrast)
        text = GetSysColor(key.isCurrent   ? COLOR_HIGHLIGHTTEXT
                           : key.isEnabled ? COLOR_BTNTEXT
                                           : COLOR_GRAYTEXT);
    const int height = place.bottom - place.top;
    const int line = std::max(height / 24, 1);
    const HBRUSH brush = CreateSolidBrush(colour);
    const HPEN pen =
        CreatePen(PS_INSIDEFRAME, key.isCurrent ? 3 * line : line,
                  key.isCurrent ? GetSysColor(COLOR_HIGHLIGHT) : GetSysColor(COLOR_BTNSHADOW));
    const HGDIOBJ earlierBrush = SelectObject(context, brush);
    const HGDIOBJ earlierPen = SelectObject(context, pen);
    const int round = std::max(height / 8, 2);
    RoundRect(context, place.left, place.top, place.right, place.bottom, round, round);
    if (key.isProgrammed) { // a mark in the lower right corner
        const int size = std::max(height / 5, 3);
        const int inset = 4 * line;
        const POINT corner[] = {{place.right - inset, place.bottom - inset},
                                {place.right - inset - size, place.bottom - inset},
                                {place.right - inset, place.bottom - inset - size}};
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
    DrawCaption(context, place, key.caption);
    if (key.index == look.focus) {
        SetTextColor(context, RGB(0, 0, 0)); // the colours that the rectangle inverts with
        SetBkColor(context, RGB(255, 255, 255));
        InflateRect(&place, -line, -line);
        DrawFocusRect(context, &place);
    }
}

} // namespace

std::vector<RECT> PlacesOf(const std::vector<KeyCap>& keys, const RECT& area) {
    if (keys.empty())
        return {};
    Single left = keys[0].left, top = keys[0].top, right = 0, bottom = 0;
    for (const KeyCap& key : keys) {
        left = std::min(left, key.left);
        top = std::min(top, key.top);
        right = std::max(right, key.left + key.width);
        bottom = std::max(bottom, key.top + key.height);
    }
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
    const HFONT font = KeyFont(look.font, PlainHeight(places));
    const HGDIOBJ earlier = SelectObject(context, font);
    for (std::size_t i = 0; i < places.size(); ++i)
        DrawKey(context, places[i], state.keys[i], look);
    SelectObject(context, earlier);
    DeleteObject(font);
}

} // namespace qx::com
