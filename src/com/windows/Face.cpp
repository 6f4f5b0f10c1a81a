#include "com/windows/Face.h"

#include "com/windows/PartsFace.h"
#include "com/windows/Resources.h"
#include "com/windows/Server.h"

#include <algorithm>
#include <array>

namespace qx::com {
namespace {

RGBQUAD QuadOf(COLORREF colour) {
    return {GetBValue(colour), GetGValue(colour), GetRValue(colour), 0};
}

// The toolbox picture in the form's colours: its black lines in the text colour, its grey ground in
// the background colour.
class Icon {
public:
    explicit Icon(const FaceColours& colours)
        : m_bitmap(static_cast<HBITMAP>(LoadImageW(Module(), MAKEINTRESOURCEW(QX_TOOLBOX_BITMAP),
                                                   IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))),
          m_context(CreateCompatibleDC(nullptr)), m_earlier(SelectObject(m_context, m_bitmap)) {
        std::array<RGBQUAD, 16> table{};
        const UINT count = GetDIBColorTable(m_context, 0, table.size(), table.data());
        for (RGBQUAD& entry : table) {
            const COLORREF colour = RGB(entry.rgbRed, entry.rgbGreen, entry.rgbBlue);
            if (colour == kGround)
                entry = QuadOf(colours.background);
            else if (colour == kLines)
                entry = QuadOf(colours.text);
        }
        SetDIBColorTable(m_context, 0, count, table.data());
    }
    Icon(const Icon&) = delete;
    Icon& operator=(const Icon&) = delete;
    ~Icon() {
        SelectObject(m_context, m_earlier);
        DeleteDC(m_context);
        DeleteObject(m_bitmap);
    }

    void Draw(HDC context, LONG left, LONG top, int side) const {
        SetStretchBltMode(context, COLORONCOLOR);
        StretchBlt(context, left, top, side, side, m_context, 0, 0, kSide, kSide, SRCCOPY);
    }

    static constexpr int kSide = 16; // pixels of the picture

private:
    static constexpr COLORREF kGround = RGB(0xC0, 0xC0, 0xC0);
    static constexpr COLORREF kLines = RGB(0, 0, 0);

    HBITMAP m_bitmap;
    HDC m_context;
    HGDIOBJ m_earlier;
};

class NameFace : public Face {
public:
    explicit NameFace(std::string_view name) : m_name(Wide(name)) {}

    void Draw(HDC context, const RECT& bounds, const Ambient& ambient) override {
        RECT area = bounds;
        const FaceFont font(ambient);
        const FaceColours colours(ambient);
        const FontMeasures measures(font.Get());
        FillArea(context, area, colours.background);
        DrawEdge(context, &area, EDGE_ETCHED, BF_RECT | BF_ADJUST);
        IntersectClipRect(context, area.left, area.top, area.right, area.bottom);
        area.left += measures.Gap();
        const int side = Icon::kSide * std::max(1, measures.Line() / kLineOfIcon);
        Icon(colours).Draw(context, area.left, (area.top + area.bottom - side) / 2, side);
        area.left += side + measures.Gap();
        const HGDIOBJ earlier = SelectObject(context, font.Get());
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, colours.text);
        DrawTextW(context, m_name.c_str(), -1, &area,
                  DT_LEFT | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        SelectObject(context, earlier);
    }

private:
    static constexpr int kLineOfIcon = 13; // pixels; the picture doubles with the line height

    std::wstring m_name;
};

} // namespace

std::unique_ptr<Face> MakeFace(Object& object, std::function<void()> changed) {
    if (auto table = FaceOf(object))
        return std::make_unique<PartsFace>(&object, std::move(*table), std::move(changed));
    return std::make_unique<NameFace>(object.ClassOf().name);
}

} // namespace qx::com
