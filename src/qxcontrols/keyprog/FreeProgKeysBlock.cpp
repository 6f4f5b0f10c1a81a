#include "qxcontrols/keyprog/FreeProgKeysBlock.h"

#include "qxcontrols/blocks/BlockRoutines.h"

#include <span>

namespace qx {

namespace {

struct KeyRange {
    Integer first;
    Integer last;
};
constexpr KeyRange kCommonOrder[] = {
    {KeyboardSequences::kMinKeyID, KeyboardSequences::kMaxKeyID},
};
constexpr KeyRange k4620Order[] = {{75, 126}, {66, 74}};

std::span<const KeyRange> KeyOrder(KeyboardModuleIDs eModule) {
    if (eModule == MODULE_FUNCKEYS_X1_4620)
        return k4620Order;
    return kCommonOrder;
}

} // namespace

std::vector<Integer> StoredFreeProgKeys(const KeyboardSequences& sequences,
                                        KeyboardModuleIDs eModule) {
    std::vector<Integer> keys;
    for (const KeyRange& range : KeyOrder(eModule))
        for (Integer id = range.first; id <= range.last; ++id)
            if (sequences.Key(id).PositionCode() > 0)
                keys.push_back(id);
    return keys;
}

std::string EncodeFreeProgKeys(const KeyboardSequences& sequences, KeyboardModuleIDs eModule) {
    std::string block;
    for (const Integer id : StoredFreeProgKeys(sequences, eModule))
        block += SequenceToBytes(sequences.Key(id), kFreeProgKeySlotSize);
    return block;
}

void DecodeFreeProgKeys(std::string_view sBlock, KeyboardModuleIDs eModule,
                        KeyboardSequences& sequences) {
    Long position = 0;
    for (const Integer id : StoredFreeProgKeys(sequences, eModule))
        BytesToSequence(sequences.Key(id), position, kFreeProgKeySlotSize, sBlock);
}

} // namespace qx
