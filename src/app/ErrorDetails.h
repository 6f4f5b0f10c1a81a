// ErrorDetails: the technical facts of an error, in the language of the program.
#pragma once

#include "host/Error.h"

#include <QString>

namespace qx::app {

// Line by line: the driver's call, places, obstacles, what the system reported, related errors.
[[nodiscard]] QString DetailsText(const host::Error& error);

// "till.json for till 42, 3 May 2026 10:21"
[[nodiscard]] QString WriteText(const host::WriteName& write);
// The document's name; "an untitled document" for an empty one.
[[nodiscard]] QString DocumentText(const std::string& name);

} // namespace qx::app
