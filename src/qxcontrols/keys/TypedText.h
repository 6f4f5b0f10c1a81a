// Text as the keys that type it on a layout.
#pragma once

#include "qxcontrols/common/Types.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;

// A character that no key of the layout types.
class UntypableCharacter : public std::invalid_argument {
public:
    explicit UntypableCharacter(std::string character)
        : std::invalid_argument("no key of the layout types \"" + character + "\""),
          m_character(std::move(character)) {}
    [[nodiscard]] const std::string& Character() const { return m_character; }

private:
    std::string m_character;
};

// The codes that press and release, one after the other, the keys that type the text's characters
// (see KeyCharacters.h); a dead key is followed by the space bar, which also types the space.
// Throws UntypableCharacter.
[[nodiscard]] std::vector<Byte> CodesThatType(std::string_view sText,
                                              const QXKeyboardLayoutData& layout);

} // namespace qx
