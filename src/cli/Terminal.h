// Terminal: what standard error is shown on.
#pragma once

namespace qx::cli {

// How many columns the terminal has that standard error is; 0 where it is none.
[[nodiscard]] int TerminalColumns();

// Whether to use colours there: not when NO_COLOR is set, nor on a terminal that has none.
[[nodiscard]] bool TerminalHasColor();

} // namespace qx::cli
