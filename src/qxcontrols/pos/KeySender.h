// What a key sends when several modules program it: the sequence of its POS block; without one, its
// sequence as a free key, the modules in the order of kFreeKeyModules; without one, its own codes.
#pragma once

#include "qxcontrols/keyprog/FreeProgKeysBlock.h"
#include "qxcontrols/pos/POSKeyboard.h"

namespace qx {

// What the modules hold for a key.
struct KeyModules {
    const POSKeyboard* blocks = nullptr; // null: there is no such module
    // The key's sequence in each module; null where it has no place.
    std::array<const KeySequence*, kFreeKeyModules.size()> freeKeys = {};
};

struct KeySender {
    KeyboardModuleIDs module = MODULE_NONE; // that has the sequence; MODULE_NONE: the key itself
    Integer key = 0;                        // a POS key index or a position code
    Integer slot = 0;                       // of the POS block; else as `key`
    const KeySequence* sequence = nullptr;  // the module's; null: the key's own codes
};

// The key with a position code. With a POS key index it is pressed at that place alone; without
// one, the lowest index of the position code counts whose block has a sequence.
[[nodiscard]] KeySender SenderOf(const KeyModules& modules, Integer nPositionCode,
                                 Integer nKeyIndex = 0);

} // namespace qx
