// Traces: the writes on record that have left a part of themselves in a keyboard.
//
// Keyboards that cannot be distinguished may each have been interrupted in a different write, so
// one keyboard may contain parts of several.
#pragma once

#include "host/Journal.h"
#include "host/Session.h"

#include <string>
#include <vector>

namespace qx::host {

// A write on record, and its trace in the opened keyboard.
struct TracedWrite : JournalEntry {
    Trace trace = Trace::None;
};

[[nodiscard]] std::vector<WriteName> NamesOf(const std::vector<JournalEntry>& entries);

// The error for a keyboard that contains no part of this write, which therefore stays on record:
// the keyboard may be another one.
[[nodiscard]] Error NotPartlyHeld(const TracedWrite& write);

// The entries that the opened keyboard contains a part of. Reads only their bytes first, which is
// quick and excludes most. Throws Error(TransferFailed).
[[nodiscard]] std::vector<JournalEntry> PartlyHeld(Session& session,
                                                   const std::vector<JournalEntry>& entries);

// The entries of `held` (a keyboard contains a part of each) that may be the write it was
// interrupted in. Entries replaced by a later one are omitted, and only one of several identical
// ones is kept: the one of this origin, or else the newest. Sorted newest first.
[[nodiscard]] std::vector<JournalEntry> Candidates(const std::vector<JournalEntry>& held,
                                                   const std::string& sOrigin);

} // namespace qx::host
