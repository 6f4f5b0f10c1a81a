#include "com/faces/Faces.h"

#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keyprog/QXFreeProgKeys.h"
#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"
#include "qxcontrols/pos/QXPos.h"
#include "qxcontrols/pos/QXPosDisplay.h"
#include "qxcontrols/readers/QXBarcode.h"
#include "qxcontrols/readers/QXMagnetCard.h"

namespace qx::com {

namespace {

struct FaceOfClass {
    const Class& type;
    FaceTable (*make)(void* native);
};

template <typename C>
FaceOfClass For() {
    return {TableOf<C>(), [](void* native) { return FaceTableOf(*static_cast<C*>(native)); }};
}

} // namespace

std::optional<FaceTable> FaceOf(const Object& object) {
    static const FaceOfClass faces[] = {For<QXBarcode>(),         For<QXMagnetCard>(),
                                        For<QXCommonKeyboard>(),  For<QXFreeProgKeys>(),
                                        For<QXLayeredFuncKeys>(), For<QXPos>(),
                                        For<QXPosDisplay>(),      For<QXLayoutDisplay>()};
    for (const FaceOfClass& face : faces)
        if (&face.type == &object.ClassOf()) {
            FaceTable table = face.make(object.Native());
            Refresh(table.root);
            return table;
        }
    return std::nullopt;
}

} // namespace qx::com
