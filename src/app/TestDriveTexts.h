// TestDriveTexts: what the test drive reports, in the language of the program.
#pragma once

#include "simulator/Reception.h"

#include <QString>

namespace qx::app {

// Where what the PC receives comes from: "Header of track 2", "Layer 3 F6".
[[nodiscard]] QString OriginTextOf(const sim::Stretch& stretch);
[[nodiscard]] QString RemarkTextOf(const sim::Remark& remark);

} // namespace qx::app
