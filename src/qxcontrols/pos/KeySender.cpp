#include "qxcontrols/pos/KeySender.h"

#include "qxcontrols/pos/POSCodeMapping.h"

namespace qx {

KeySender SenderOf(const KeyModules& modules, Integer nPositionCode, Integer nKeyIndex) {
    const POSCodeMapping mapping;
    for (Integer index = 1; modules.blocks != nullptr && index <= POSKeyboard::kSlots; ++index) {
        const bool isMeant = nKeyIndex != 0 ? index == nKeyIndex
                                            : mapping.GetPositionCodeForKey(index) == nPositionCode;
        const Integer slot = isMeant ? modules.blocks->FindBlockForKey(index) : Integer{0};
        if (slot != 0 && modules.blocks->Block(slot).Sequence().Length() > 0)
            return {MODULE_POS, index, slot, &modules.blocks->Block(slot).Sequence()};
    }
    for (std::size_t i = 0; i < modules.freeKeys.size(); ++i)
        if (const KeySequence* sequence = modules.freeKeys[i];
            sequence != nullptr && sequence->Length() > 0)
            return {kFreeKeyModules[i], nPositionCode, nPositionCode, sequence};
    return {MODULE_NONE, nPositionCode, nPositionCode, nullptr};
}

} // namespace qx
