// The place of a block of POS keys: the slot of its lowest key, which is its major key; and what
// editors of blocks do with whole keys.
//
// The keyboard does not store which key of a block is its major one: after reading, it is the
// lowest. Code that creates or changes a block must therefore place it with these functions, so
// that a block is the same before and after its transfer to the keyboard.
#pragma once

#include "qxcontrols/pos/POSKeyboard.h"

#include <vector>

namespace qx {

// The block's keys in the order in which they were added.
[[nodiscard]] std::vector<Integer> KeysOf(const POSBlock& block);

// Puts the block, with these keys in ascending order, into its slot, and returns the slot's number;
// 0 for a block without keys. Throws std::out_of_range, and changes nothing, if the lowest key is
// not one of 1 to 105.
Integer PlaceBlock(POSKeyboard& keyboard, POSBlock block, std::vector<Integer> keys);

// Places a new block of these keys, which are in no other, with the lowest number from 1 and, while
// there is one, a colour that no block has. Returns its slot.
Integer StartBlock(POSKeyboard& keyboard, std::vector<Integer> keys);

// The slots of the blocks that have some of the keys, in ascending order.
[[nodiscard]] std::vector<Integer> BlocksWith(const POSKeyboard& keyboard,
                                              const std::vector<Integer>& keys);

// Makes one block of the keys: those in no block join the block that has some of them, or become a
// new one. False, and nothing is changed, if they are in several blocks.
[[nodiscard]] bool JoinKeys(POSKeyboard& keyboard, const std::vector<Integer>& keys);

// Takes the keys out of their blocks. A block that loses all its keys is gone, with its sequence.
void SplitKeys(POSKeyboard& keyboard, const std::vector<Integer>& keys);

// Frees the slot: no keys, no sequence.
void FreeSlot(POSKeyboard& keyboard, Integer nSlot);

// The same blocks, each in its slot and each key in only one of them: a key in two blocks goes to
// the later one, as in the keyboard. Keys that the module does not have are omitted.
[[nodiscard]] POSKeyboard InTheirSlots(const POSKeyboard& keyboard);

} // namespace qx
