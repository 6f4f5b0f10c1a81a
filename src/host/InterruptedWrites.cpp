#include "host/InterruptedWrites.h"

#include "host/Refusal.h"

#include <algorithm>

namespace qx::host {

std::vector<TracedWrite> InterruptedWrites::OnRecord(const KeyboardContent& now,
                                                     const ClaimNames& own) const {
    std::vector<DamagedRecord> damaged;
    std::vector<TracedWrite> traced;
    for (JournalEntry& entry : m_records.journal.Entries(&damaged)) {
        if (!entry.keyboard.IsLike(now.identity) ||
            (!own.contains(Claims::NameOf(entry.keyboard, entry.origin)) &&
             m_records.IsInProgress(entry)))
            continue;
        const Trace trace = entry.TraceIn(AsReadFor(entry, now));
        traced.push_back({std::move(entry), trace});
    }
    for (const DamagedRecord& record : damaged)
        if (Journal::MayBeOf(record, now.identity))
            throw Error(Cause::EntryDamaged, {.place = record.error.place}, {record.error});
    return traced;
}

std::vector<JournalEntry> InterruptedWrites::Partly(std::vector<TracedWrite> writes) {
    std::vector<JournalEntry> entries;
    for (TracedWrite& write : writes)
        if (write.trace == Trace::Partial)
            entries.push_back(std::move(write));
    return entries;
}

bool InterruptedWrites::MayHaveAny() const {
    std::vector<DamagedRecord> damaged;
    const auto entries = m_records.journal.Entries(&damaged);
    return !damaged.empty() || !PartlyHeld(m_session, entries).empty();
}

KeyboardContent InterruptedWrites::AsReadFor(const JournalEntry& entry,
                                             const KeyboardContent& now) const {
    return entry.HasAreasOf(now) ? now : m_session.ReadPlaces(entry.Areas());
}

void RefuseInterrupted(const std::vector<JournalEntry>& entries) {
    if (!entries.empty())
        throw Refusal(Cause::WriteInterrupted, {.writes = NamesOf(entries)});
}

void RequireOneEnd(const std::vector<JournalEntry>& entries, RecoverWay way,
                   const KeyboardContent& now) {
    const bool isSame = std::all_of(entries.begin(), entries.end(), [&](const JournalEntry& entry) {
        return entry.HasAreasOf(now) &&
               entry.Ended(way, now).HoldsSame(entries.front().Ended(way, now));
    });
    if (entries.size() > 1 && !isSame)
        throw Refusal(Cause::WritesInterrupted, {.writes = NamesOf(entries)});
}

} // namespace qx::host
