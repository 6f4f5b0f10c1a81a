// TestDriveTexts: the results of the test drive in the language of the program.
#pragma once

#include "simulator/Reception.h"

#include <QString>

namespace qx::host {
class Configuration;
}

namespace qx::app {

// The origin of the codes that the PC receives: "prefix of track 2", "POS keys › Key 3 (F2)".
[[nodiscard]] QString OriginTextOf(const sim::Stretch& stretch,
                                   const host::Configuration& configuration,
                                   const QXKeyboardLayoutData& layout);
[[nodiscard]] QString RemarkTextOf(const sim::Remark& remark);

} // namespace qx::app
