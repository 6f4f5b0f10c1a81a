// A key sequence as displayed by the controls.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <string>

namespace qx {

class QXKeyboardLayoutData;

// The names of the sequence's keys in the layout, optionally with those of released keys. Without a
// layout, the codes separated by spaces.
[[nodiscard]] std::string SequenceCaption(const KeySequence& sequence,
                                          const QXKeyboardLayoutData* layout, bool fUseUpcodes);

} // namespace qx
