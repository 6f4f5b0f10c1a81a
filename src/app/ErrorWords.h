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
// The section that the error is about, by its title.
[[nodiscard]] QString SectionOf(const host::Error& error);
// "till 1 or till 2"
[[nodiscard]] QString Alternatives(const std::vector<std::string>& names);

} // namespace qx::app
