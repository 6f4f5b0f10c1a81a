// The block of the free programmable keys in the keyboard's memory: one sequence slot for each key
// that takes part, without gaps.
//
// A key takes part when its sequence has a position code above 0, as QXFreeProgKeys gives it to the
// keys that the layout has as programmable. Most modules store the keys in ascending order;
// MODULE_FUNCKEYS_X1_4620 has an order of its own, and no place for other keys.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeyboardSequences.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx {

// The ids of the keys that take part, in the order of the module's block.
[[nodiscard]] std::vector<Integer> StoredFreeProgKeys(const KeyboardSequences& sequences,
                                                      KeyboardModuleIDs eModule);

// The block. A sequence with a code -1 among its first kFreeProgKeySlotSize has no slot, and all
// later slots move forward: its key and each one after it get the sequence of the next key, and the
// last key gets the blanks (code 32) with which WriteIntoMemory fills up a block that is too short.
// Throws std::overflow_error at any other of these codes that is not one of 0 to 255.
[[nodiscard]] std::string EncodeFreeProgKeys(const KeyboardSequences& sequences,
                                             KeyboardModuleIDs eModule);

// Fills the sequences of the keys that take part; what a short block lacks is empty.
void DecodeFreeProgKeys(std::string_view sBlock, KeyboardModuleIDs eModule,
                        KeyboardSequences& sequences);

} // namespace qx
