#include "qxcontrols/pos/POSBlockPlaces.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

namespace qx {

namespace {

// The lowest number from `first` on that no block has, by the property that `numberOf` reads.
template <typename NumberOf>
Integer FirstUnused(const POSKeyboard& keyboard, Integer first, NumberOf numberOf) {
    for (Integer number = first;; ++number) {
        bool isUsed = false;
        for (Integer slot = 1; slot <= POSKeyboard::kSlots && !isUsed; ++slot)
            isUsed =
                keyboard.Block(slot).BlockSize() > 0 && numberOf(keyboard.Block(slot)) == number;
        if (!isUsed)
            return number;
    }
}

} // namespace

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

Integer StartBlock(POSKeyboard& keyboard, std::vector<Integer> keys) {
    POSBlock block;
    block.SetBlockID(FirstUnused(keyboard, 1, [](const POSBlock& b) { return b.BlockID(); }));
    const Integer color = FirstUnused(keyboard, 0, [](const POSBlock& b) { return b.ColorID(); });
    keyboard.CalcDefinedBlockNum();
    block.SetColorID(color < POSBlock::kColors
                         ? color
                         : static_cast<Integer>(keyboard.BlockNum() % POSBlock::kColors));
    return PlaceBlock(keyboard, std::move(block), std::move(keys));
}

std::vector<Integer> BlocksWith(const POSKeyboard& keyboard, const std::vector<Integer>& keys) {
    std::set<Integer> slots;
    for (const Integer key : keys)
        if (const Integer slot = keyboard.FindBlockForKey(key); slot != 0)
            slots.insert(slot);
    return {slots.begin(), slots.end()};
}

bool JoinKeys(POSKeyboard& keyboard, const std::vector<Integer>& keys) {
    const std::vector<Integer> slots = BlocksWith(keyboard, keys);
    if (slots.size() > 1)
        return false;
    if (slots.empty()) {
        StartBlock(keyboard, keys);
        return true;
    }
    const POSBlock block = keyboard.Block(slots[0]);
    std::vector<Integer> all = KeysOf(block);
    for (const Integer key : keys)
        if (!block.HasKey(key))
            all.push_back(key);
    FreeSlot(keyboard, slots[0]);
    PlaceBlock(keyboard, block, std::move(all));
    return true;
}

void SplitKeys(POSKeyboard& keyboard, const std::vector<Integer>& keys) {
    for (const Integer slot : BlocksWith(keyboard, keys)) {
        const POSBlock block = keyboard.Block(slot);
        std::vector<Integer> left = KeysOf(block);
        std::erase_if(left, [&](Integer key) {
            return std::find(keys.begin(), keys.end(), key) != keys.end();
        });
        FreeSlot(keyboard, slot);
        PlaceBlock(keyboard, block, std::move(left));
    }
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
