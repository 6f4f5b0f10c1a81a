// The POS module's block in the keyboard's memory, from and to the block model.
//
// Each key index has a record: whether the key is unassigned, a single key or in a group, and for a
// single key and a group's major key the sequence. Numbers are single bytes. The keyboard knows no
// block ids and no colours; groups are numbered by their place.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/pos/POSKeyboard.h"

#include <string>
#include <string_view>

namespace qx {

// The block that holds the model. A key that stands in two blocks goes to the later one's group. A
// sequence with a code -1 among its first kPOSSequenceSize leaves its place out, and the block is
// then shorter. Throws std::overflow_error at any other of these codes that is not one of 0 to 255,
// and std::out_of_range when a block holds a key that is not one of 1 to 105.
[[nodiscard]] std::string EncodePOSModuleBlock(const POSKeyboard& keyboard);

// Replaces the model with that of the block, of kPOSModuleBlockSize bytes. Groups keep their number
// as BlockID; single keys get numbers of their own, the first of which may be that of a group.
// Throws std::out_of_range at the first key of a group above 105, with the keys before it in the
// model. CalcDefinedBlockNum is for the caller.
void DecodePOSModuleBlock(std::string_view sBlock, POSKeyboard& keyboard);

} // namespace qx
