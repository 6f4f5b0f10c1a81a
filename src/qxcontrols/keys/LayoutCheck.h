// LayoutCheck: finds the faults of a keyboard layout that opening it passes over.
//
// An open refuses a rectangle that is not one and takes all else as it comes: a wrong digit counts
// as 0, a key without a rectangle keeps that of the layout before. Programs that open layouts made
// by people check them first.
#pragma once

#include <string>

namespace qx {

class LayoutTextSource;

// The first fault of the layout that the source holds, with its place: "us.qxl, line 12: position
// code 30: the support is 7, not 0, 1 or 2". Empty when there is none.
[[nodiscard]] std::string LayoutFault(const LayoutTextSource& source);

} // namespace qx
