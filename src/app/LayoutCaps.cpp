#include "app/LayoutCaps.h"

#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "views/Bindings.h"

#include <QCoreApplication>

namespace qx::app {

using views::ToQt;

std::vector<views::KeyCap> LayoutCaps(const QXKeyboardLayoutData& layout) {
    std::vector<views::KeyCap> caps;
    for (Long id = layout.GetMinKeyID(); id <= layout.GetMaxKeyID(); ++id) {
        if (layout.KeySupport(id) == KEYMODE_NONE)
            continue;
        views::KeyCap cap;
        cap.index = id;
        cap.place = QRectF(
            static_cast<double>(layout.KeyX(id)), static_cast<double>(layout.KeyY(id)),
            static_cast<double>(layout.KeyWidth(id)), static_cast<double>(layout.KeyHeight(id)));
        cap.caption = ToQt(layout.KeyCaption(id)).trimmed();
        cap.toolTip = ToQt(layout.KeyLongCaption(id));
        cap.name =
            QCoreApplication::translate("LayoutCaps", "Key %1").arg(ToQt(KeyName(id, &layout)));
        caps.push_back(std::move(cap));
    }
    return caps;
}

} // namespace qx::app
