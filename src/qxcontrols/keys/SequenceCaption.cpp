#include "qxcontrols/keys/SequenceCaption.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"

namespace qx {

std::string SequenceCaption(const KeySequence& sequence, const QXKeyboardLayoutData* layout,
                            bool fUseUpcodes) {
    if (layout != nullptr)
        return layout->ConvertKeyStringIntoTextStringUseUpcodes(sequence.KeyString(), fUseUpcodes);
    std::string text;
    for (const Integer code : sequence.Codes())
        text += (text.empty() ? "" : " ") + std::to_string(code);
    return text;
}

} // namespace qx
