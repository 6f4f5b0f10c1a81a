#include "com/windows/FaceDrawing.h"

#include "com/windows/KeysDrawing.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>

namespace qx::com {
namespace {

constexpr UINT kOneLine = DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS;

void DrawCheckBox(HDC context, RECT area, const PartState& state, const FontMeasures& measures) {
    const int size = measures.Line();
    const int top = (area.top + area.bottom - size) / 2;
    RECT box{area.left, top, area.left + size, top + size};
    DrawFrameControl(context, &box, DFC_BUTTON,
                     DFCS_BUTTONCHECK | (state.value == 1 ? DFCS_CHECKED : 0U) |
                         (state.isEnabled ? 0U : DFCS_INACTIVE));
    area.left = box.right + measures.Gap() / 2;
    DrawTextW(context, WideFromUtf8(state.text).c_str(), -1, &area, kOneLine);
}

void DrawField(HDC context, RECT area, const std::string& text, UINT format) {
    FillArea(context, area, GetSysColor(COLOR_WINDOW));
    DrawEdge(context, &area, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    InflateRect(&area, -2, -1);
    SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(context, WideFromUtf8(text).c_str(), -1, &area, format | DT_NOPREFIX);
}

void DrawList(HDC context, RECT area, const PartState& state, const FontMeasures& measures) {
    FillArea(context, area, GetSysColor(COLOR_WINDOW));
    DrawEdge(context, &area, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    RECT line = area;
    Integer index = 0;
    for (const std::string& item : state.items) {
        line.bottom = std::min(line.top + measures.Line(), area.bottom);
        if (line.top >= line.bottom)
            break;
        const bool isSelected = index++ == state.value;
        if (isSelected)
            FillArea(context, line, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(context, GetSysColor(isSelected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        RECT text = line;
        text.left += 3;
        DrawTextW(context, WideFromUtf8(item).c_str(), -1, &text, kOneLine | DT_NOPREFIX);
        line.top = line.bottom;
    }
}

void DrawSlider(HDC context, const RECT& area, const PartState& state,
                const FontMeasures& measures) {
    const int middle = (area.top + area.bottom) / 2;
    const int thumb = measures.Line() / 2;
    RECT groove{area.left + thumb, middle - 2, area.right - thumb, middle + 2};
    DrawEdge(context, &groove, EDGE_SUNKEN, BF_RECT);
    const int range = std::max(state.max - state.min, 1);
    const int x = groove.left + MulDiv(groove.right - groove.left, state.value - state.min, range);
    RECT grip{x - thumb / 2, middle - thumb, x + thumb / 2, middle + thumb};
    DrawFrameControl(context, &grip, DFC_BUTTON, DFCS_BUTTONPUSH);
}

} // namespace

FaceFont::FaceFont(const Ambient& ambient) : m_ambient(ambient.font) {
    if (m_ambient && SUCCEEDED(m_ambient->get_hFont(&m_font)))
        return;
    m_ambient = nullptr;
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof(metrics);
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0);
    m_font = CreateFontIndirectW(&metrics.lfMessageFont);
}

FaceFont::~FaceFont() {
    if (!m_ambient)
        DeleteObject(m_font);
}

FaceColours::FaceColours(const Ambient& ambient) {
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof(contrast);
    isHighContrast =
        SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) != FALSE &&
        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
    background = isHighContrast ? GetSysColor(COLOR_BTNFACE) : ambient.background;
    text = isHighContrast ? GetSysColor(COLOR_BTNTEXT) : ambient.foreground;
}

std::wstring WideFromUtf8(std::string_view text) {
    return Wide(Utf16FromUtf8(text));
}

FontMeasures::FontMeasures(HFONT font)
    : m_screen(CreateCompatibleDC(nullptr)), m_earlier(SelectObject(m_screen, font)) {
    TEXTMETRICW metrics{};
    GetTextMetricsW(m_screen, &metrics);
    m_line = metrics.tmHeight;
    m_letter = metrics.tmAveCharWidth;
}

FontMeasures::~FontMeasures() {
    SelectObject(m_screen, m_earlier);
    DeleteDC(m_screen);
}

SIZE FontMeasures::SizeOf(const std::string& text, int width, UINT format) const {
    RECT area{0, 0, width, 0};
    if (!text.empty())
        DrawTextW(m_screen, WideFromUtf8(text).c_str(), -1, &area, format | DT_CALCRECT);
    return {area.right, area.bottom};
}

int FontMeasures::WidthOf(const Part& part) const {
    const int text = SizeOf(part.state.text, 0, DT_SINGLELINE).cx;
    switch (part.kind) {
    case PartKind::Label:
        return std::clamp(text + 2, 4 * m_letter, 60 * m_letter);
    case PartKind::CheckBox:
        return text + m_line + Gap() + 4;
    case PartKind::Button:
        return std::max(text + 2 * m_line, 12 * m_letter);
    case PartKind::List: {
        int widest = 14 * m_letter;
        for (const std::string& item : part.state.items)
            widest = std::max(widest, static_cast<int>(SizeOf(item, 0, DT_SINGLELINE).cx));
        return widest + GetSystemMetrics(SM_CXVSCROLL) + 3 * m_letter;
    }
    default:
        return 24 * m_letter;
    }
}

int FontMeasures::HeightOf(const Part& part, int width) const {
    const auto textHeight = [&](int inside) {
        return static_cast<int>(SizeOf(part.state.text, inside, DT_WORDBREAK).cy);
    };
    switch (part.kind) {
    case PartKind::Label:
        return std::max(textHeight(width), m_line);
    case PartKind::CheckBox:
        return m_line + 2;
    case PartKind::Button:
        return m_line + m_line * 3 / 4;
    case PartKind::Sequence: // up to four lines; the rest scrolls
        return std::clamp(textHeight(width - 2 * m_letter), m_line, 4 * m_line) + AroundText();
    case PartKind::Slider:
        return 2 * m_line;
    case PartKind::List:
        return 4 * m_line + m_line / 2;
    case PartKind::Keys:
        return std::clamp(HeightOfKeys(part.state.keys, width), 2 * m_line, 8 * m_line);
    default:
        return m_line + AroundText();
    }
}

// A field's text begins at its upper edge, so extra height would appear only below it.
int FontMeasures::AroundText() const {
    return 2 * GetSystemMetrics(SM_CYEDGE) + m_line / 5;
}

RECT RectOf(const Place& place) {
    return {place.left, place.top, place.left + place.width, place.top + place.height};
}

void FillArea(HDC context, const RECT& area, COLORREF colour) {
    const HBRUSH brush = CreateSolidBrush(colour);
    FillRect(context, &area, brush);
    DeleteObject(brush);
}

void DrawFrame(HDC context, const RECT& area, const FontMeasures& measures) {
    RECT line = area;
    line.top += measures.TitleHeight() / 2;
    DrawEdge(context, &line, EDGE_ETCHED, BF_RECT);
}

RECT TitleOf(const PlacedPart& frame, const FontMeasures& measures) {
    Part title;
    title.kind = PartKind::Label;
    title.state = frame.part->state;
    RECT area = RectOf(frame.place);
    area.left += measures.Gap();
    area.right =
        std::min<LONG>(area.right - measures.Gap(),
                       area.left + (title.state.text.empty() ? 0 : measures.WidthOf(title)));
    area.bottom = area.top + measures.TitleHeight();
    return area;
}

void DrawPart(HDC context, const PlacedPart& placed, const FontMeasures& measures,
              const FaceColours& colours, HFONT font) {
    const PartState& state = placed.part->state;
    RECT area = RectOf(placed.place);
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, state.isEnabled ? colours.text : GetSysColor(COLOR_GRAYTEXT));
    switch (placed.part->kind) {
    case PartKind::Frame:
        DrawFrame(context, area, measures);
        area = TitleOf(placed, measures);
        FillArea(context, area, colours.background);
        DrawTextW(context, WideFromUtf8(state.text).c_str(), -1, &area, kOneLine);
        break;
    case PartKind::Label:
        DrawTextW(context, WideFromUtf8(state.text).c_str(), -1, &area, DT_LEFT | DT_WORDBREAK);
        break;
    case PartKind::CheckBox:
        DrawCheckBox(context, area, state, measures);
        break;
    case PartKind::Button:
        DrawFrameControl(context, &area, DFC_BUTTON,
                         DFCS_BUTTONPUSH | (state.isEnabled ? 0U : DFCS_INACTIVE));
        DrawTextW(context, WideFromUtf8(state.text).c_str(), -1, &area,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        break;
    case PartKind::Slider:
        DrawSlider(context, area, state, measures);
        break;
    case PartKind::List:
        DrawList(context, area, state, measures);
        break;
    case PartKind::Keys:
        DrawKeys(context, area, state, {font, colours.isHighContrast});
        break;
    default:
        DrawField(context, area, state.text, DT_LEFT | DT_WORDBREAK);
    }
}

} // namespace qx::com
