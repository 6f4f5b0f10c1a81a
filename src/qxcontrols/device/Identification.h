// How a keyboard describes itself in its memory: the texts of its identification and the bits of
// its capability byte. Their addresses are those of QXKeyboardAccess; areas that a module uses are
// described with the module.
#pragma once

#include "qxcontrols/device/QXKeyboardAccess.h"

#include <cstddef>

namespace qx {

// A text of the identification: where it begins there, and how many characters it has.
struct IdentificationText {
    std::size_t start;
    std::size_t length;
};
inline constexpr IdentificationText kKeyboardText{0, 16};
inline constexpr IdentificationText kBootloaderText{16, 4};
inline constexpr IdentificationText kProgramText{20, 4};
inline constexpr IdentificationText kCountryText{24, 4};
inline constexpr IdentificationText kConfigText{28, 4};
static_assert(kConfigText.start + kConfigText.length == QXKeyboardAccess::kIdentificationSize);

// Each is set in the capability byte when the keyboard has the part.
inline constexpr Byte kFreeProgKeysBit = 0x01;
inline constexpr Byte kConnectionV24Bit = 0x02;
inline constexpr Byte kChipcardReaderBit = 0x04;
inline constexpr Byte kBarcodeReaderBit = 0x08;
inline constexpr Byte kTrackBits[] = {0x80, 0x40, 0x20, 0x10}; // tracks 1 to 4

} // namespace qx
