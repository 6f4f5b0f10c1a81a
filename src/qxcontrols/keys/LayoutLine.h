// LayoutLine: the line of one key in a keyboard layout.
//
//     (top,left,width,height)21  Caption\\Long caption
//
// The rectangle may be missing. The two digits are the support and the colour set; the two
// characters behind them are passed over.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>

namespace qx {

enum KEY_SUPPORT {
    KEYMODE_NONE = 0,  // the keyboard has no such key
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

    // Takes over the line of position code lID. A digit that is none of 0 to 2 counts as 0, and a
    // line without a rectangle leaves the one that the key has. Throws std::invalid_argument or
    // std::overflow_error for a rectangle that is not four numbers that fit 16 bits when rounded.
    void Parse(Long lID, std::string_view line);
    // Takes over the rectangle at the line's front, if there is one; returns what follows it.
    std::string_view ParseGeometry(std::string_view line);
};

} // namespace qx
