// Where a block of POS keys stands: in the slot of its lowest key, which is its major key.
//
// The keyboard does not keep which key of a block is its major one: read back, it is the lowest. So
// whoever makes or changes a block places it by these functions, and a block is the same before and
// after its way through the keyboard.
#pragma once

#include "qxcontrols/pos/POSKeyboard.h"

#include <vector>

namespace qx {

// The block's keys in the order in which they were added.
[[nodiscard]] std::vector<Integer> KeysOf(const POSBlock& block);

// Puts the block, with these keys in ascending order, into its slot, whose number is the result. A
// block without keys has none (0). Throws std::out_of_range, and changes nothing, when the lowest
// key is not one of 1 to 105.
Integer PlaceBlock(POSKeyboard& keyboard, POSBlock block, std::vector<Integer> keys);

// Makes the slot free: no keys, no sequence.
void FreeSlot(POSKeyboard& keyboard, Integer nSlot);

// The same blocks, each in its slot and each key in one of them: a key that stands in two goes to
// the later one, as it does in the keyboard. Keys that the module lacks are left out.
[[nodiscard]] POSKeyboard InTheirSlots(const POSKeyboard& keyboard);

} // namespace qx
