// POSBlock: the keys that act as one POS key, and the sequence that each of them sends.
//
// A block owns its sequence: one that is set is copied. The first key added is the block's major
// key, the others are its members. A key should stand in one block only; the editors of the model
// see to that, a block does not. Only CopyContent is traced: the other members are called for every
// key in turn.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/keys/KeySequence.h"

#include <vector>

namespace qx {

class POSBlock {
public:
    static constexpr Integer kMaxKeys = kPOSKeys;

    // The label that the block is shown with.
    [[nodiscard]] Integer BlockID() const { return m_blockId; }
    void SetBlockID(Integer nBlockID) { m_blockId = nBlockID; }
    // Index of the preference colour that the block is shown in, 0 to 9.
    [[nodiscard]] Integer ColorID() const { return m_colorId; }
    void SetColorID(Integer nColorID) { m_colorId = nColorID; }

    // The number of keys, 0 to kMaxKeys. A block without keys is free.
    [[nodiscard]] Integer BlockSize() const { return static_cast<Integer>(m_keys.size()); }
    // Appends a key, also one that the block has already; nothing when the block is full.
    void AddKey(Integer nKey);
    [[nodiscard]] bool HasKey(Integer nKey) const;
    // The key at place nIndex, counted from 1; 0 outside the block. GetLast is the key added last.
    [[nodiscard]] Integer GetKey(Integer nIndex) const;
    [[nodiscard]] Integer GetLast() const { return GetKey(BlockSize()); }
    // Remove the last key, if there is one, or all keys; everything else stays.
    void CleanLast();
    void Clean();

    [[nodiscard]] KeySequence& Sequence() { return m_sequence; }
    [[nodiscard]] const KeySequence& Sequence() const { return m_sequence; }
    void SetSequence(const KeySequence& sequence) { m_sequence = sequence; }

    // Takes over everything of oSource; nothing when there is none.
    void CopyContent(const POSBlock* oSource);

private:
    Integer m_blockId = 0;
    Integer m_colorId = 0;
    std::vector<Integer> m_keys;
    KeySequence m_sequence;
};

} // namespace qx
