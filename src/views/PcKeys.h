// PcKeys: the keys of the PC's own keyboard by their places, whatever the PC's layout makes of
// them.
#pragma once

#include "qxcontrols/common/Types.h"

class QKeyEvent;

namespace qx::views {

// The customary key number (1 to 126) of the key that was pressed or released, which a sequence has
// as its code; 0 for a key that has none, such as those that control the volume.
[[nodiscard]] Byte PositionCodeOf(const QKeyEvent& event);

} // namespace qx::views
