// The keyboard's memory map: the fixed addresses, and the sizes of its modules' areas.
//
// The address of a module's area is in the keyboard's directory (ConfigDirEntry). The layout of
// settings in an area is described with the module; the sizes and addresses here are defined by the
// device.
#pragma once

#include "qxcontrols/common/Types.h"

#include <cstddef>

namespace qx {

// The capability byte: each bit is set if the keyboard has the component.
inline constexpr Long kCapabilityAddress = 0x7FF;
inline constexpr Byte kFreeProgKeysBit = 0x01;
inline constexpr Byte kConnectionV24Bit = 0x02;
inline constexpr Byte kChipcardReaderBit = 0x04;
inline constexpr Byte kBarcodeReaderBit = 0x08;
inline constexpr Byte kTrackBits[] = {0x80, 0x40, 0x20, 0x10}; // tracks 1 to 4

// The identification: consecutive texts of fixed length.
inline constexpr Long kIdentificationAddress = 0x7FC0;
inline constexpr Long kIdentificationSize = 32;
struct IdentificationText {
    std::size_t start; // offset within the identification
    std::size_t length;
};
inline constexpr IdentificationText kKeyboardText{0, 16};
inline constexpr IdentificationText kBootloaderText{16, 4};
inline constexpr IdentificationText kProgramText{20, 4};
inline constexpr IdentificationText kCountryText{24, 4};
inline constexpr IdentificationText kConfigText{28, 4};
static_assert(kConfigText.start + kConfigText.length == kIdentificationSize);

// The code page of the POS keys.
inline constexpr Long kCodePageAddress = 0x6C80;
inline constexpr Integer kCodePageSize = 256;

// MODULE_MAGNET_CONFIG: the keyboard's output delay, and the magnetic-stripe reader's switches.
inline constexpr Long kOutputDelaySize = 1;
inline constexpr Long kMagneticSwitchesOffset = 5;
inline constexpr Long kMagneticSwitchesSize = 3;

// MODULE_MAGNET_HEADERS and MODULE_BARCODE_HEADERS: two slots for every input of the reader, each
// with one sequence.
inline constexpr Integer kMagneticTracks = 4;
inline constexpr Integer kBarcodeReaders = 2;
inline constexpr Long kTrackSlotSize = 32;
inline constexpr Long kTrackSlotsSize = 2 * kTrackSlotSize; // one input
inline constexpr Long kMagneticHeadersSize = kMagneticTracks * kTrackSlotsSize;
inline constexpr Long kBarcodeHeadersSize = kBarcodeReaders * kTrackSlotsSize;

// MODULE_BARCODE_CONFIG.
inline constexpr Long kBarcodeConfigSize = 50;

// MODULE_FREEPROGRAMMABLE_KEYS and MODULE_FUNCKEYS_X1_...: a slot for every programmable key.
inline constexpr Long kFreeProgKeySlotSize = 32;

// MODULE_LAYERED_FUNCKEYS: a slot for every key of every layer; keys are numbered within their
// layer. The keys' descriptions have a fixed address and are in UTF-16 units.
inline constexpr Integer kFuncKeyLayers = 10;
inline constexpr Integer kFuncKeysOfLayer = 24;
inline constexpr Long kFuncKeySlotSize = 128;
inline constexpr Long kFuncKeySequencesSize = kFuncKeyLayers * kFuncKeysOfLayer * kFuncKeySlotSize;
inline constexpr Long kFuncKeyDescAddress = 70000;
inline constexpr Integer kFuncKeyDescLength = 64;
inline constexpr Long kFuncKeyDescSlotSize = kFuncKeyDescLength * 2;
inline constexpr Long kFuncKeyDescSize = kFuncKeyLayers * kFuncKeysOfLayer * kFuncKeyDescSlotSize;

// MODULE_GUID: the identifier of the configuration.
inline constexpr Long kGuidSize = 16;

// MODULE_POS: a record for every key, which begins with its group and contains a sequence.
inline constexpr Integer kPOSKeys = 105;
inline constexpr Integer kPOSSequenceSize = 31;
inline constexpr Long kPOSRecordSize = 1 + kPOSSequenceSize;
inline constexpr Long kPOSModuleBlockSize = kPOSKeys * kPOSRecordSize;
inline constexpr Byte kPOSSingleKey = 0; // as a group: the key forms a block by itself
inline constexpr Byte kPOSUnassigned = 255;

} // namespace qx
