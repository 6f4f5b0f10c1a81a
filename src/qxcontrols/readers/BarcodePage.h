// The pages of the barcode reader's settings.
#pragma once

#include "qxcontrols/common/Types.h"

#include <array>
#include <string_view>

namespace qx {

enum BarcodePage : Integer {
    // Pages with options; from BP_Code39 on, also with a range of code lengths.
    BP_CommonSettings = 0,
    BP_EAN,
    BP_UPC,
    BP_Code39,
    BP_Code128,
    BP_CodaBar,
    BP_Code25_Overlapped,
    BP_Code25_Industrial,
    BP_Code25_Matrix,
    BP_Code93,
    BP_Code11,
    BP_Code16K,
    BP_MSI,
    BP_Plessey,
    // Pages with the header and the terminator of a reader input.
    BP_Reader_1,
    BP_Reader_2,
};

inline constexpr Integer kBarcodeOptionPages = 14;
inline constexpr Integer kBarcodePages = 16;

// The names of the pages with options, by number.
inline constexpr std::array<std::string_view, kBarcodeOptionPages> kBarcodePageNames = {
    "CommonSettings",
    "EAN",
    "UPC",
    "Code39",
    "Code128",
    "CodaBar",
    "Code25_Overlapped",
    "Code25_Industrial",
    "Code25_Matrix",
    "Code93",
    "Code11",
    "Code16K",
    "MSI",
    "Plessey",
};

} // namespace qx
