// InterruptedWrites: the writes on record that the opened keyboard may have been cut in.
//
// The keyboard that is plugged in now need not be the one of a minute ago, nor can it always be
// told from another one. So a write on record concerns a keyboard only when that shows a part of
// it.
#pragma once

#include "host/Session.h"
#include "host/Traces.h"
#include "host/WriteRecords.h"

#include <set>
#include <string>
#include <vector>

namespace qx::host {

class InterruptedWrites {
public:
    using ClaimNames = std::set<std::string>; // of claims that this program has itself

    // `sOrigin` is how the keyboard is reached. The others outlive it.
    InterruptedWrites(Session& session, const WriteRecords& records, const std::string& sOrigin)
        : m_session(session), m_records(records), m_origin(sOrigin) {}

    // What the keyboard shows of each write on record to keyboards of its kind, oldest first; those
    // that another program is busy with are left out. Throws Error(FileFailed) when an entry of
    // this kind is damaged.
    [[nodiscard]] std::vector<TracedWrite> OnRecord(const KeyboardContent& now,
                                                    const ClaimNames& own = {}) const;
    // Those of which it holds a part.
    [[nodiscard]] static std::vector<JournalEntry> Partly(std::vector<TracedWrite> writes);
    // Those that it may have been cut in, the newest first.
    [[nodiscard]] std::vector<JournalEntry> CutIn(const std::vector<TracedWrite>& writes) const {
        return Candidates(Partly(writes), m_origin);
    }
    [[nodiscard]] std::vector<JournalEntry> CutIn(const KeyboardContent& now,
                                                  const ClaimNames& own = {}) const {
        return CutIn(OnRecord(now, own));
    }
    // The same when the keyboard has not been read: quick where there are none.
    [[nodiscard]] bool MayHaveAny() const;

    // What the keyboard holds in the areas of the entry.
    [[nodiscard]] KeyboardContent AsReadFor(const JournalEntry& entry,
                                            const KeyboardContent& now) const;

private:
    Session& m_session;
    const WriteRecords& m_records;
    std::string m_origin;
};

// Throws where there are any.
void RefuseInterrupted(const std::vector<JournalEntry>& entries);
// Throws where they lead to different contents of a keyboard that holds this.
void RequireOneEnd(const std::vector<JournalEntry>& entries, RecoverWay way,
                   const KeyboardContent& now);

} // namespace qx::host
