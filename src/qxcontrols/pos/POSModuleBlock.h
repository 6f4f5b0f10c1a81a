// Converts between the POS module's block in the keyboard's memory and the block model.
//
// Each key index has a record: whether the key is unassigned, a single key or in a group, and, for
// a single key or a group's major key, the sequence. Numbers are single bytes. The keyboard does
// not store block ids or colours; groups are numbered by their place.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/pos/POSKeyboard.h"

#include <string>
#include <string_view>

namespace qx {

// Encodes the model. A key in two blocks goes to the later one's group. A sequence with a code -1
// among its first kPOSSequenceSize codes is omitted: the block is then 31 bytes shorter, and all
// later records begin 31 bytes too early, so that their groups and sequences are read wrongly;
// WriteIntoMemory fills the end with blanks. Throws std::overflow_error for any other of these
// codes outside 0 to 255, and std::out_of_range if a block contains a key outside 1 to 105.
[[nodiscard]] std::string EncodePOSModuleBlock(const POSKeyboard& keyboard);

// Replaces the model by that of the block, of kPOSModuleBlockSize bytes. Groups keep their number
// as BlockID; single keys get new numbers, the first of which may equal a group's. Throws
// std::out_of_range at the first key of a group above 105; the model then contains the keys before
// it. The caller must call CalcDefinedBlockNum.
void DecodePOSModuleBlock(std::string_view sBlock, POSKeyboard& keyboard);

} // namespace qx
