// Configurations that fill a keyboard up to any degree.
#pragma once

#include "host/Configuration.h"
#include "qxcontrols/common/Types.h"

namespace qx::bench {

// Fills nPercent of the slots of every module, evenly distributed: with a sequence of this code (1
// to 255) as long as the slot; for layered function keys, also with a description of 64 characters.
// POS keys get a block each. The other slots are emptied. The configuration needs a layout.
void Fill(host::Configuration& configuration, int nPercent, Byte code);

} // namespace qx::bench
