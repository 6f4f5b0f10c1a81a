// Configurations with as much in them as a keyboard can hold.
#pragma once

#include "host/Configuration.h"
#include "qxcontrols/common/Types.h"

namespace qx::bench {

// Fills nPercent of each 100 slots of every module, evenly spread: with a sequence of this code (1
// to 255) as long as the slot, and for layered function keys with a description of 64 characters.
// POS keys get a block each. The other slots become empty. The configuration needs a layout.
void Fill(host::Configuration& configuration, int nPercent, Byte code);

} // namespace qx::bench
