// How the barcode reader's settings lie in the keyboard's memory.
//
// The area of MODULE_BARCODE_CONFIG holds code lengths, option bits and fixed bytes; the sequences
// of the two reader inputs fill that of MODULE_BARCODE_HEADERS.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/BarcodeSettings.h"
#include "qxcontrols/readers/TrackSlots.h"

#include <functional>
#include <string>
#include <string_view>

namespace qx {

// The configuration block; the headers block is that of EncodeTrackSlots. Throws
// std::overflow_error at a code length that is not one of 0 to 255; `put` has then been handed the
// bytes before it. The result is false when `put` has ended the block by giving false.
bool EncodeBarcodeConfig(const BarcodeSettings& settings, const std::function<bool(Byte)>& put);
[[nodiscard]] std::string EncodeBarcodeConfig(const BarcodeSettings& settings);

// Whether the block has a bit for the page's flag.
[[nodiscard]] bool HasBarcodeConfigBit(BarcodePage ePage, Integer nFlag);

// Takes a block of kBarcodeConfigSize bytes. Code lengths are taken as they stand, whatever the
// limits; the common settings' flag 3 is not in the block and stays.
void DecodeBarcodeConfig(std::string_view block, BarcodeSettings& settings);

} // namespace qx
