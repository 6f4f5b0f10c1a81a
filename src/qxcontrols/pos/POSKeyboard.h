// POSKeyboard: the blocks of the POS module, one slot for each key index from 1 to 105.
//
// The keyboard owns its blocks. A block belongs in the slot whose number is its major key's index;
// a slot whose block has no keys is free. Block and FindBlockForKey are not traced: they are called
// for every key.
#pragma once

#include "qxcontrols/pos/POSBlock.h"

#include <array>

namespace qx {

class POSKeyboard {
public:
    static constexpr Integer kSlots = kPOSKeys;

    // The block in slot nIndex. Throws std::out_of_range outside 1 to 105.
    [[nodiscard]] POSBlock& Block(Integer nIndex);
    [[nodiscard]] const POSBlock& Block(Integer nIndex) const;

    // The first slot whose block contains the key; 0 if there is none.
    [[nodiscard]] Integer FindBlockForKey(Integer nKey) const;

    // The number of blocks with keys, as of the last CalcDefinedBlockNum.
    [[nodiscard]] Integer BlockNum() const { return m_blockNum; }
    void CalcDefinedBlockNum();

    // Removes the keys and the sequence of every block; ids and colours are unchanged.
    void CleanAllBlocks();
    // Copies all blocks from oSource; does nothing if it is null.
    void CopyContent(const POSKeyboard* oSource);

    // A hook for diagnosis; does nothing, not even trace.
    void VBObjectDump() const {}

private:
    std::array<POSBlock, kSlots> m_blocks;
    Integer m_blockNum = 0;
};

} // namespace qx
