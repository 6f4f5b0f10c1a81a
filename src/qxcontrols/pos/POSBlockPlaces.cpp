#include "qxcontrols/pos/POSBlockPlaces.h"

#include <algorithm>
#include <array>
#include <utility>

namespace qx {

std::vector<Integer> KeysOf(const POSBlock& block) {
    std::vector<Integer> keys;
    for (Integer i = 1; i <= block.BlockSize(); ++i)
        keys.push_back(block.GetKey(i));
    return keys;
}

Integer PlaceBlock(POSKeyboard& keyboard, POSBlock block, std::vector<Integer> keys) {
    if (keys.empty())
        return 0;
    std::sort(keys.begin(), keys.end());
    block.Clean();
    for (const Integer key : keys)
        block.AddKey(key);
    keyboard.Block(keys.front()) = std::move(block);
    return keys.front();
}

void FreeSlot(POSKeyboard& keyboard, Integer nSlot) {
    keyboard.Block(nSlot) = {};
}

POSKeyboard InTheirSlots(const POSKeyboard& keyboard) {
    std::array<Integer, POSKeyboard::kSlots + 1> slotOfKey{};
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot)
        for (const Integer key : KeysOf(keyboard.Block(slot)))
            if (key >= 1 && key <= POSKeyboard::kSlots)
                slotOfKey[static_cast<std::size_t>(key)] = slot;

    POSKeyboard placed;
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
        std::vector<Integer> keys;
        for (Integer key = 1; key <= POSKeyboard::kSlots; ++key)
            if (slotOfKey[static_cast<std::size_t>(key)] == slot)
                keys.push_back(key);
        PlaceBlock(placed, keyboard.Block(slot), std::move(keys));
    }
    placed.CalcDefinedBlockNum();
    return placed;
}

} // namespace qx
