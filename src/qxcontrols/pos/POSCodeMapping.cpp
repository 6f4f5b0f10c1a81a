#include "qxcontrols/pos/POSCodeMapping.h"

#include "qxcontrols/pos/POSNumber.h"

#include <algorithm>
#include <array>

namespace qx {

namespace {

// The position codes of key indexes 1, 2, 3, ..., five per line.
constexpr std::array<Integer, kPOSKeys> kPositionCodes{
    110, 112, 113, 114, 115, // 1
    116, 117, 118, 119, 120, // 6
    121, 122, 123, 55,  124, // 11
    16,  1,   75,  76,  80,  // 16
    81,  85,  86,  40,  41,  // 21
    27,  28,  12,  13,  125, // 26
    2,   3,   4,   5,   6,   // 31
    7,   8,   9,   10,  11,  // 36
    15,  90,  95,  100, 126, // 41
    17,  18,  19,  20,  21,  // 46
    22,  23,  24,  25,  26,  // 51
    29,  91,  96,  101, 105, // 56
    30,  31,  32,  33,  34,  // 61
    35,  36,  37,  38,  39,  // 66
    43,  92,  97,  102, 106, // 71
    44,  46,  47,  48,  49,  // 76
    50,  51,  52,  53,  54,  // 81
    57,  93,  98,  103, 108, // 86
    58,  60,  61,  61,  61,  // 91
    83,  84,  79,  89,  62,  // 96
    64,  99,  99,  104, 108, // 101
};

} // namespace

Integer POSCodeMapping::GetPositionCodeForKey(Integer nKeyID) const {
    RequirePOSNumber("POS key", nKeyID);
    return kPositionCodes[static_cast<std::size_t>(nKeyID - 1)];
}

Integer POSCodeMapping::GetKeyIndex(Integer nPositionCode) const {
    const auto found = std::find(kPositionCodes.begin(), kPositionCodes.end(), nPositionCode);
    return found == kPositionCodes.end() ? Integer{0}
                                         : static_cast<Integer>(found - kPositionCodes.begin() + 1);
}

} // namespace qx
