// The three areas of the keyboard's memory for the layered function keys: the sequences, the
// configuration's identifier and the keys' descriptions.
//
// The identifier and the descriptions consist of numbers of 16 and 32 bits in the driver's byte
// order; these are therefore transferred number by number through the keyboard access.
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

// The offset of a key's slot in the sequences' area.
[[nodiscard]] constexpr Long FuncKeySlotOffset(Integer nLayer, Integer nKeyID) {
    return (nLayer * kFuncKeysOfLayer + nKeyID) * kFuncKeySlotSize;
}
// The number of bytes of its slot that a sequence uses, including the final 0; 0 for an empty
// sequence.
[[nodiscard]] Long UsedSlotSize(const KeySequence& sequence);

// The sequences' area, of kFuncKeySequencesSize bytes. A sequence with a code -1 among its first
// kFuncKeySlotSize has no slot, and all later slots move forward: its key and each one after it get
// the sequence of the next key, and the last key of the last layer gets the blanks (code 32) with
// which WriteIntoMemory fills up an area that is too short. Throws std::overflow_error at any other
// of these codes that is not one of 0 to 255.
[[nodiscard]] std::string EncodeFuncKeySequences(const FuncKeyLayers& layers);
void DecodeFuncKeySequences(std::string_view sBlock, FuncKeyLayers& layers);

// The identifier at its area's base address. Parts that the driver refuses to read are 0.
[[nodiscard]] Guid ReadFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress);
void WriteFuncKeyGuid(QXKeyboardAccess& keyboard, Long lAddress, const Guid& guid);
// The same in a copy of the area, which has kGuidSize bytes.
[[nodiscard]] Guid GuidFromBytes(std::string_view sBytes);
[[nodiscard]] std::string GuidToBytes(const Guid& guid);

// The descriptions at kFuncKeyDescAddress. A description is written cut to kFuncKeyDescLength
// units, even if that splits a character beyond the BMP; it is read up to the first 0, with an
// unpaired surrogate as U+FFFD.
void ReadFuncKeyDescriptions(QXKeyboardAccess& keyboard, FuncKeyLayers& layers);
void WriteFuncKeyDescriptions(QXKeyboardAccess& keyboard, const FuncKeyLayers& layers);

} // namespace qx
