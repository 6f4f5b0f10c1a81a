// The block of the free keys in the keyboard's memory: one sequence slot for each
// participating key, without gaps.
//
// A key participates if its sequence has a position code above 0, which QXFreeProgKeys sets for the
// keys that the layout marks as programmable. Most modules store the keys in ascending order;
// MODULE_FUNCKEYS_X1_4620 has its own order, and no place for other keys.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeyboardSequences.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

// The modules with such a block.
inline constexpr std::array<KeyboardModuleIDs, 4> kFreeKeyModules = {
    MODULE_FREEPROGRAMMABLE_KEYS,
    MODULE_FUNCKEYS_X1_4610,
    MODULE_FUNCKEYS_X1_4620,
    MODULE_FUNCKEYS_X1_4630,
};

// The ids of the participating keys, in the order of the module's block.
[[nodiscard]] std::vector<Integer> StoredFreeProgKeys(const KeyboardSequences& sequences,
                                                      KeyboardModuleIDs eModule);

// The block. A sequence with a code -1 among its first kFreeProgKeySlotSize has no slot, and all
// later slots move forward: its key and each one after it get the sequence of the next key, and the
// last key gets the blanks (code 32) with which WriteIntoMemory fills up a block that is too short.
// Throws std::overflow_error at any other of these codes that is not one of 0 to 255.
[[nodiscard]] std::string EncodeFreeProgKeys(const KeyboardSequences& sequences,
                                             KeyboardModuleIDs eModule);

// Fills the sequences of the participating keys; those missing in a short block are emptied.
void DecodeFreeProgKeys(std::string_view sBlock, KeyboardModuleIDs eModule,
                        KeyboardSequences& sequences);

} // namespace qx
