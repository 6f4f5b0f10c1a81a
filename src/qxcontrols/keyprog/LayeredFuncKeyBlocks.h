// The three areas of the keyboard's memory in which the layered function keys are stored: the
// sequences, the configuration's identifier and the keys' descriptions.
//
// The identifier and the descriptions consist of numbers of 16 and 32 bits, which are in the byte
// order of the driver; so these go through the keyboard access, number by number.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keyprog/FuncKeyLayer.h"
#include "qxcontrols/platform/GuidCreator.h"

#include <array>
#include <string>
#include <string_view>

namespace qx {

class QXKeyboardAccess;

using FuncKeyLayers = std::array<FuncKeyLayer, kFuncKeyLayers>;

// Where a key's slot begins in the sequences' area.
[[nodiscard]] constexpr Long FuncKeySlotOffset(Integer nLayer, Integer nKeyID) {
    return (nLayer * kFuncKeysOfLayer + nKeyID) * kFuncKeySlotSize;
}
// The bytes of its slot that a sequence uses, with the 0 that ends it; 0 for an empty sequence.
[[nodiscard]] Long UsedSlotSize(const KeySequence& sequence);

// The sequences' area, of kFuncKeySequencesSize bytes. A sequence with a code -1 among its first
// kFuncKeySlotSize has no slot, and all later slots move forward: its key and each one after it get
// the sequence of the next key, and the last key of the last layer gets the blanks (code 32) with
// which WriteIntoMemory fills up an area that is too short. Throws std::overflow_error at any other
// of these codes that is not one of 0 to 255.
[[nodiscard]] std::string EncodeFuncKeySequences(const FuncKeyLayers& layers);
void DecodeFuncKeySequences(std::string_view sBlock, FuncKeyLayers& layers);

// The identifier at its area's base address. What the driver refuses to read is 0.
[[nodiscard]] Guid ReadFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress);
void WriteFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress, const Guid& guid);

// The descriptions at kFuncKeyDescAddress. A description is written cut to kFuncKeyDescLength
// units, also where that cuts a character beyond the BMP in two; it is read up to the first 0, a
// lone surrogate as U+FFFD.
void ReadFuncKeyDescriptions(QXKeyboardAccess& keyboard, FuncKeyLayers& layers);
void WriteFuncKeyDescriptions(QXKeyboardAccess& keyboard, const FuncKeyLayers& layers);

} // namespace qx
