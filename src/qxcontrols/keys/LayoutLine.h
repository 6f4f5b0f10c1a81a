// LayoutLine: the line of one key in a keyboard layout.
//
//     (top,left,width,height)21  Caption\\Long caption
//
// The rectangle may be missing. The two digits are the support and the colour set; the two
// characters after them are ignored.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>

namespace qx {

enum KEY_SUPPORT {
    KEYMODE_NONE = 0,  // the keyboard does not have this key
    KEYMODE_EXIST = 1, // a key that cannot be programmed
    KEYMODE_PROG = 2,  // a programmable key
};

enum COLOR_SET { COLOR_SET_1 = 0, COLOR_SET_2 = 1, COLOR_SET_3 = 2 };

struct LayoutKey {
    std::string caption;
    std::string longCaption;
    KEY_SUPPORT support = KEYMODE_NONE;
    COLOR_SET color = COLOR_SET_1;
    Single x = 0;
    Single y = 0;
    Single width = 0;
    Single height = 0;

    // Reads the line of position code lID. A digit other than 0 to 2 counts as 0, and without a
    // rectangle the key keeps its own. Throws TextFaultError for a rectangle that is not four
    // numbers, each within 16 bits when rounded.
    void Parse(Long lID, std::string_view line);
    // Reads the rectangle at the start of the line, if there is one; returns the rest.
    std::string_view ParseGeometry(Long lID, std::string_view line);
};

} // namespace qx
