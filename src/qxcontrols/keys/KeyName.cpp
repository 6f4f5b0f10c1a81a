#include "qxcontrols/keys/KeyName.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

namespace qx {

std::string KeyLabel(Long lCode, const QXKeyboardLayoutData* layout) {
    if (layout == nullptr)
        return {};
    const std::string_view caption = Trim(layout->KeyCaption(lCode));
    return std::string(caption.empty() ? Trim(layout->KeyLongCaption(lCode)) : caption);
}

std::string KeyName(Long lNumber, std::string_view sLabel) {
    const std::string number = std::to_string(lNumber);
    const std::string_view label = Trim(sLabel);
    return label.empty() ? number : number + " (" + std::string(label) + ")";
}

std::string KeyName(Long lCode, const QXKeyboardLayoutData* layout) {
    return KeyName(lCode, KeyLabel(lCode, layout));
}

} // namespace qx
