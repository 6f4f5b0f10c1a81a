// Text as the keys that type it, on a keyboard of a layout.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

// The codes that press and release, one after the other, the keys that type the text's characters.
// A key types its caption, a letter in lower case. With Shift it types the letter in upper case, or
// the character behind the caption at the end of its long caption ("Key 1 !", "Touche & 1"). The
// space bar types the blank. Throws std::invalid_argument that names a character which no key
// types.
[[nodiscard]] std::vector<Byte> CodesThatType(std::string_view sText,
                                              const QXKeyboardLayoutData& layout);

} // namespace qx
