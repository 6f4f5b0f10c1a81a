#include "com/windows/Face.h"

namespace qx::com {
namespace {

class NameFace : public Face {
public:
    explicit NameFace(std::string_view name) : m_name(Wide(name)) {}

    void Draw(HDC context, const RECT& bounds, const Ambient& ambient) override {
        RECT area = bounds;
        const HBRUSH brush = CreateSolidBrush(ambient.background);
        FillRect(context, &area, brush);
        DeleteObject(brush);
        DrawEdge(context, &area, EDGE_ETCHED, BF_RECT);
        HFONT font = nullptr;
        if (!ambient.font || FAILED(ambient.font->get_hFont(&font)))
            font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
        const HGDIOBJ earlier = SelectObject(context, font);
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, ambient.foreground);
        DrawTextW(context, m_name.c_str(), -1, &area,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        SelectObject(context, earlier);
    }

private:
    std::wstring m_name;
};

} // namespace

std::unique_ptr<Face> MakeFace(Object& object) {
    return std::make_unique<NameFace>(object.ClassOf().name);
}

} // namespace qx::com
