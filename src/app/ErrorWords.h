// ErrorWords: errors in the language of the program.
#pragma once

#include "host/Error.h"

#include <QString>

#include <string>

namespace qx::app {

// The cause as a sentence, without the names of the driver's functions.
[[nodiscard]] QString CauseText(const host::Error& error);
// The user's next step in this program; may be empty.
[[nodiscard]] QString SuggestionText(const host::Error& error);
// The technical details line by line: the driver's call, places, the words of a layer below.
[[nodiscard]] QString DetailsText(const host::Error& error);

// The document of a write on record: its name, or "an untitled document" if that is empty.
[[nodiscard]] QString DocumentText(const std::string& document);
// "till.json for till 42, 3 May 2026 10:21"
[[nodiscard]] QString WriteText(const host::WriteName& write);

} // namespace qx::app
