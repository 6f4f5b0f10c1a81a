#include "com/windows/Face.h"

#include "com/windows/PartsFace.h"

namespace qx::com {
namespace {

class NameFace : public Face {
public:
    explicit NameFace(std::string_view name) : m_name(Wide(name)) {}

    void Draw(HDC context, const RECT& bounds, const Ambient& ambient) override {
        RECT area = bounds;
        const FaceFont font(ambient);
        const FaceColours colours(ambient);
        FillArea(context, area, colours.background);
        DrawEdge(context, &area, EDGE_ETCHED, BF_RECT);
        const HGDIOBJ earlier = SelectObject(context, font.Get());
        SetBkMode(context, TRANSPARENT);
        SetTextColor(context, colours.text);
        DrawTextW(context, m_name.c_str(), -1, &area,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS);
        SelectObject(context, earlier);
    }

private:
    std::wstring m_name;
};

} // namespace

std::unique_ptr<Face> MakeFace(Object& object, std::function<void()> changed) {
    if (auto table = FaceOf(object))
        return std::make_unique<PartsFace>(&object, std::move(*table), std::move(changed));
    return std::make_unique<NameFace>(object.ClassOf().name);
}

} // namespace qx::com
