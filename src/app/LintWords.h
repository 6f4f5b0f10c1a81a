// The warnings about key sequences, in the program's language.
#pragma once

#include "host/SequenceLint.h"

#include <QString>

namespace qx::app {

// "Key 30 (A) is pressed and never released."
[[nodiscard]] QString WarningText(const host::SequenceWarning& warning,
                                  const QXKeyboardLayoutData& layout);

} // namespace qx::app
