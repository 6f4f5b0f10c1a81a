// Text as the keys that type it on a layout.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

// The codes that press and release, one after the other, the keys that type the text's characters
// (see KeyCharacters.h); a dead key is followed by the space bar, which also types the space.
// Throws std::invalid_argument naming a character that no key types.
[[nodiscard]] std::vector<Byte> CodesThatType(std::string_view sText,
                                              const QXKeyboardLayoutData& layout);

} // namespace qx
