// A key sequence as the controls show it.
#pragma once

#include "qxcontrols/keys/KeySequence.h"

#include <string>

namespace qx {

class QXKeyboardLayoutData;

// The names of the sequence's keys in the layout, with those of the released keys if asked for.
// Without a layout the codes, separated by blanks.
[[nodiscard]] std::string SequenceCaption(const KeySequence& sequence,
                                          const QXKeyboardLayoutData* layout, bool fUseUpcodes);

} // namespace qx
