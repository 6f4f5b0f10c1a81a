// Traces: which writes on record have left a part of themselves in a keyboard.
//
// Keyboards that cannot be told from each other may each have been cut in a write of its own, so
// one may show a part of several.
#pragma once

#include "host/Journal.h"
#include "host/Session.h"

#include <string>
#include <vector>

namespace qx::host {

// A write on record, and what the opened keyboard shows of it.
struct TracedWrite : JournalEntry {
    Trace trace = Trace::None;
};

[[nodiscard]] std::vector<WriteName> NamesOf(const std::vector<JournalEntry>& entries);

// For a keyboard that holds no part of this write, which therefore is not settled: it may be
// another one.
[[nodiscard]] Error NotPartlyHeld(const TracedWrite& write);

// Those of the entries that the opened keyboard holds a part of. Reads only their bytes first,
// which is quick and excludes most. Throws Error(TransferFailed).
[[nodiscard]] std::vector<JournalEntry> PartlyHeld(Session& session,
                                                   const std::vector<JournalEntry>& entries);

// Those of `held`, of each of which a keyboard holds a part, that may be the one it was cut in. One
// that a later one replaces is left out, and of several that are alike only one stays: that of this
// origin, else the newest. The newest comes first.
[[nodiscard]] std::vector<JournalEntry> Candidates(const std::vector<JournalEntry>& held,
                                                   const std::string& sOrigin);

} // namespace qx::host
