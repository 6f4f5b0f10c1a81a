// The barcode reader's settings in the keyboard's memory.
//
// The area of MODULE_BARCODE_CONFIG contains code lengths, option bits and fixed bytes; that of
// MODULE_BARCODE_HEADERS contains the sequences of the two reader inputs.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/BarcodeSettings.h"
#include "qxcontrols/readers/TrackSlots.h"

#include <functional>
#include <string>
#include <string_view>

namespace qx {

// Encodes the configuration block; the headers block is that of EncodeTrackSlots. Throws
// std::overflow_error at a code length outside 0 to 255, after passing the bytes before it to
// `put`. False if `put` has returned false, which ends the block.
bool EncodeBarcodeConfig(const BarcodeSettings& settings, const std::function<bool(Byte)>& put);
[[nodiscard]] std::string EncodeBarcodeConfig(const BarcodeSettings& settings);

// Whether the block has a bit for the page's flag.
[[nodiscard]] bool HasBarcodeConfigBit(BarcodePage ePage, Integer nFlag);

// Decodes a block of kBarcodeConfigSize bytes. Code lengths are not limited; the common settings'
// flag 3 is not in the block and stays unchanged.
void DecodeBarcodeConfig(std::string_view block, BarcodeSettings& settings);

} // namespace qx
