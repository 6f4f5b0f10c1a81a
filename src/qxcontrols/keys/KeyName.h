// KeyName: the name of a key for people, the same wherever a key is named: "30 (A)".
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>

namespace qx {

class QXKeyboardLayoutData;

// The key's legend in the layout: its caption, or the long caption if that is blank, without spaces
// at its ends. Empty if the key has neither, or without a layout.
[[nodiscard]] std::string KeyLabel(Long lCode, const QXKeyboardLayoutData* layout);

// The key's number and its label; the number alone if the label is blank.
[[nodiscard]] std::string KeyName(Long lNumber, std::string_view sLabel);
// The same for a position code and its label in the layout.
[[nodiscard]] std::string KeyName(Long lCode, const QXKeyboardLayoutData* layout);

} // namespace qx
