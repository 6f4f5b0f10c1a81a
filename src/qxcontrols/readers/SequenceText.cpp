#include "qxcontrols/readers/SequenceText.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

namespace qx {

std::string SequenceText(const KeySequence& sequence, const QXKeyboardLayoutData* layout,
                         bool fUseUpcodes) {
    if (layout != nullptr)
        return layout->ConvertKeyStringIntoTextStringUseUpcodes(sequence.KeyString(), fUseUpcodes);
    std::string codes;
    for (Integer i = 1; i <= sequence.Length(); ++i)
        codes += (i == 1 ? "" : " ") + std::to_string(sequence.GetPositionCode(i));
    return codes;
}

} // namespace qx
