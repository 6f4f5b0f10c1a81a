// ErrorWords: errors in the language of the program.
#pragma once

#include "host/Error.h"

#include <QString>

namespace qx::app {

// What went wrong, as a sentence without the names of the driver's functions.
[[nodiscard]] QString CauseText(const host::Error& error);
// What the keyboard holds after a write that failed; empty where the cause says it.
[[nodiscard]] QString HoldsText(const host::Error& error);
// What the user can do about it in this program; may be empty.
[[nodiscard]] QString SuggestionText(const host::Error& error);
// The technical details line by line: the driver's call, places, what a layer below reported.
[[nodiscard]] QString DetailsText(const host::Error& error);

// "download of till.json for till 42, 3 May 2026 10:21"
[[nodiscard]] QString WriteText(const host::WriteName& write);

} // namespace qx::app
