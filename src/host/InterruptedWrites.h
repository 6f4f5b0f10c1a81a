// InterruptedWrites: the writes on record that the opened keyboard may have been interrupted in.
//
// The connected keyboard need not be that of a minute ago, and cannot always be distinguished from
// another one. Therefore a write on record concerns a keyboard only if the keyboard contains a part
// of it.
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
    using ClaimNames = std::set<std::string>; // of claims held by this program itself

    // `sOrigin` is the keyboard's connection. The other arguments must outlive this object.
    InterruptedWrites(Session& session, const WriteRecords& records, const std::string& sOrigin)
        : m_session(session), m_records(records), m_origin(sOrigin) {}

    // The trace of each write on record to keyboards of this model, oldest first, without those
    // that another program is working on. Throws Error(FileFailed) if an entry for this model is
    // damaged.
    [[nodiscard]] std::vector<TracedWrite> OnRecord(const KeyboardContent& now,
                                                    const ClaimNames& own = {}) const;
    // The writes that the keyboard contains a part of.
    [[nodiscard]] static std::vector<JournalEntry> Partly(std::vector<TracedWrite> writes);
    // The writes that it may have been interrupted in, newest first.
    [[nodiscard]] std::vector<JournalEntry> CutIn(const std::vector<TracedWrite>& writes) const {
        return Candidates(Partly(writes), m_origin);
    }
    [[nodiscard]] std::vector<JournalEntry> CutIn(const KeyboardContent& now,
                                                  const ClaimNames& own = {}) const {
        return CutIn(OnRecord(now, own));
    }
    // The same for a keyboard that has not been read: quick if there are none.
    [[nodiscard]] bool MayHaveAny() const;

    // The keyboard's contents in the areas of the entry.
    [[nodiscard]] KeyboardContent AsReadFor(const JournalEntry& entry,
                                            const KeyboardContent& now) const;

private:
    Session& m_session;
    const WriteRecords& m_records;
    std::string m_origin;
};

// Throws if there are any.
void RefuseInterrupted(const std::vector<JournalEntry>& entries);
// Throws if they lead to different contents of a keyboard that now has these.
void RequireOneEnd(const std::vector<JournalEntry>& entries, RecoverWay way,
                   const KeyboardContent& now);

} // namespace qx::host
