#include "qxcontrols/pos/POSModuleBlock.h"

#include "qxcontrols/blocks/BlockRoutines.h"
#include "qxcontrols/pos/POSNumber.h"

#include <array>

namespace qx {

namespace {

constexpr Integer kKeys = kPOSKeys;

// The fields of one key's record.
struct Field {
    Long offset;
    Long size;
};
constexpr Field kGroup{0, 1};
constexpr Field kSequence{kGroup.offset + kGroup.size, kPOSSequenceSize};
static_assert(kSequence.offset + kSequence.size == kPOSRecordSize);

// One number for each key index or each group, 1 to 105.
class NumberTable {
public:
    explicit NumberTable(const char* what) : m_what(what) {}

    Integer& operator[](Integer nIndex) {
        RequirePOSNumber(m_what, nIndex);
        return m_numbers[static_cast<std::size_t>(nIndex - 1)];
    }

private:
    const char* m_what;
    std::array<Integer, kKeys> m_numbers{};
};

Long RecordStart(Integer nKey) {
    return (nKey - 1) * kPOSRecordSize;
}

Byte ByteOf(std::string_view sBlock, Integer nKey, const Field& field) {
    const Long offset = RecordStart(nKey) + field.offset;
    return static_cast<Byte>(sBlock[static_cast<std::size_t>(offset)]);
}

void ReadSequence(std::string_view sBlock, Integer nKey, KeySequence& sequence) {
    Long position = RecordStart(nKey) + kSequence.offset;
    BytesToSequence(sequence, position, kSequence.size, sBlock);
}

std::string Record(Byte group, const KeySequence& sequence) {
    return std::string(1, static_cast<char>(group)) + SequenceToBytes(sequence, kSequence.size);
}

} // namespace

std::string EncodePOSModuleBlock(const POSKeyboard& keyboard) {
    NumberTable groupOfKey("POS key");
    NumberTable majorOfSlot("POS block");
    Integer groups = 0;
    for (Integer slot = 1; slot <= kKeys; ++slot) {
        const POSBlock& block = keyboard.Block(slot);
        if (block.BlockSize() == 0)
            continue;
        groupOfKey[slot] = ++groups;
        majorOfSlot[slot] = slot;
        for (Integer i = 1; i <= block.BlockSize(); ++i)
            groupOfKey[block.GetKey(i)] = groups;
    }

    std::string data;
    data.reserve(kPOSModuleBlockSize);
    for (Integer key = 1; key <= kKeys; ++key) {
        const auto group = static_cast<Byte>(groupOfKey[key]);
        const POSBlock& block = keyboard.Block(key);
        if (group == 0)
            data += Record(kPOSUnassigned, {});
        else if (majorOfSlot[key] == 0)
            data += Record(group, {});
        else
            data += Record(block.BlockSize() == 1 ? kPOSSingleKey : group, block.Sequence());
    }
    return data;
}

void DecodePOSModuleBlock(std::string_view sBlock, POSKeyboard& keyboard) {
    Integer nextId = 0;
    for (Integer key = 1; key <= kKeys; ++key) {
        keyboard.Block(key).Clean();
        keyboard.Block(key).Sequence().Clear();
        const Byte group = ByteOf(sBlock, key, kGroup);
        if (group != kPOSSingleKey && group != kPOSUnassigned && group > nextId)
            nextId = static_cast<Integer>(group + 1);
    }

    NumberTable firstKeyOfGroup("POS group");
    Integer color = 0;
    const auto openBlock = [&](Integer key, Integer blockId) {
        POSBlock& block = keyboard.Block(key);
        block.SetBlockID(blockId);
        block.SetColorID(color);
        block.AddKey(key);
        color = static_cast<Integer>((color + 1) % POSBlock::kColors);
    };
    for (Integer key = 1; key <= kKeys; ++key) {
        const Byte group = ByteOf(sBlock, key, kGroup);
        if (group == kPOSUnassigned)
            continue;
        if (group == kPOSSingleKey) {
            openBlock(key, nextId++);
            ReadSequence(sBlock, key, keyboard.Block(key).Sequence());
            continue;
        }
        Integer& first = firstKeyOfGroup[group];
        if (first == 0) {
            first = key;
            openBlock(key, group);
        } else {
            keyboard.Block(first).AddKey(key);
        }
        if (ByteOf(sBlock, key, kSequence) > 0) // the major key's record contains it
            ReadSequence(sBlock, key, keyboard.Block(first).Sequence());
    }
}

} // namespace qx
