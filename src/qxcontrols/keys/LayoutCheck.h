// LayoutCheck: finds the errors of a keyboard layout that opening it ignores.
//
// An open refuses an invalid rectangle and tolerates everything else: a wrong digit counts as 0,
// and a key without a rectangle keeps that of the previous layout. Programs that open user-made
// layouts should check them first.
#pragma once

#include "qxcontrols/keys/QxlTextSource.h"

#include <optional>

namespace qx {

// The first error of the open layout, with its place; none for a faultless one.
[[nodiscard]] std::optional<LayoutFault> FaultIn(const QxlTextSource& source);

} // namespace qx
