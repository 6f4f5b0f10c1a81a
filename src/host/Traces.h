// Traces: which writes on record have left a part of themselves in a keyboard.
#pragma once

#include "host/Journal.h"
#include "host/Session.h"

#include <vector>

namespace qx::host {

// Those of the entries that the opened keyboard seems to hold a part of, by a quick reading of
// their bytes alone. Throws Error(TransferFailed).
[[nodiscard]] std::vector<JournalEntry> Suspects(Session& session,
                                                 const std::vector<JournalEntry>& entries);

} // namespace qx::host
