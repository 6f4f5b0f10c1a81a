// LayoutCheck: finds the errors of a keyboard layout that opening it ignores.
//
// An open refuses an invalid rectangle and tolerates everything else: a wrong digit counts as 0,
// and a key without a rectangle keeps that of the previous layout. Programs that open user-made
// layouts should check them first.
#pragma once

#include <string>

namespace qx {

class LayoutTextSource;

// The first error of the source's layout, with its place: "us.qxl, line 12: position code 30: the
// support is 7, not 0, 1 or 2". Empty if there is none.
[[nodiscard]] std::string LayoutFault(const LayoutTextSource& source);

} // namespace qx
