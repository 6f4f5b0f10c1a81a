// POSBlock: the keys that act as one POS key, and the sequence that each of them sends.
//
// A block owns its sequence: setting one copies it. The first key added is the block's major key,
// the others are its members. A key should be in one block only; the editors of the model ensure
// that, a block does not. Only CopyContent is traced: the other members are called for every key.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeySequence.h"

#include <vector>

namespace qx {

class POSBlock {
public:
    static constexpr Integer kMaxKeys = kPOSKeys;
    static constexpr Integer kColors = 10; // that blocks cycle through

    // The number displayed for the block.
    [[nodiscard]] Integer BlockID() const { return m_blockId; }
    void SetBlockID(Integer nBlockID) { m_blockId = nBlockID; }
    // Index of the block's colour in the preferences, 0 to 9.
    [[nodiscard]] Integer ColorID() const { return m_colorId; }
    void SetColorID(Integer nColorID) { m_colorId = nColorID; }

    // The number of keys, 0 to kMaxKeys. A block without keys is free.
    [[nodiscard]] Integer BlockSize() const { return static_cast<Integer>(m_keys.size()); }
    // Appends a key, even if the block already has it; ignored if the block is full.
    void AddKey(Integer nKey);
    [[nodiscard]] bool HasKey(Integer nKey) const;
    // The key at position nIndex, counted from 1; 0 outside the block. GetLast is the key added
    // last.
    [[nodiscard]] Integer GetKey(Integer nIndex) const;
    [[nodiscard]] Integer GetLast() const { return GetKey(BlockSize()); }
    // Remove the last key, if there is one, or all keys; everything else is unchanged.
    void CleanLast();
    void Clean();

    [[nodiscard]] KeySequence& Sequence() { return m_sequence; }
    [[nodiscard]] const KeySequence& Sequence() const { return m_sequence; }
    void SetSequence(const KeySequence& sequence) { m_sequence = sequence; }

    // Copies everything from oSource; does nothing if it is null.
    void CopyContent(const POSBlock* oSource);

private:
    Integer m_blockId = 0;
    Integer m_colorId = 0;
    std::vector<Integer> m_keys;
    KeySequence m_sequence;
};

} // namespace qx
