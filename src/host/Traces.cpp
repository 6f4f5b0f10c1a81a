#include "host/Traces.h"

#include "host/Stretches.h"

#include <algorithm>

namespace qx::host {

namespace {

bool IsReplaced(const JournalEntry& entry, const std::vector<JournalEntry>& held) {
    return std::any_of(held.begin(), held.end(), [&](const JournalEntry& later) {
        return std::count(later.replaced.begin(), later.replaced.end(), entry.Id()) != 0;
    });
}

} // namespace

std::vector<WriteName> NamesOf(const std::vector<JournalEntry>& entries) {
    std::vector<WriteName> names;
    for (const JournalEntry& entry : entries)
        names.push_back(entry.Name());
    return names;
}

Error NotPartlyHeld(const TracedWrite& write) {
    const Cause cause = write.trace == Trace::Before  ? Cause::HoldsOldOfWrite
                        : write.trace == Trace::After ? Cause::HoldsNewOfWrite
                                                      : Cause::HoldsNothingOfWrite;
    Error error(cause, {.holds = Holds::NotTouched, .writes = {write.Name()}});
    // The backup has what this keyboard held only if it is the one of the write.
    if (cause == Cause::HoldsNothingOfWrite)
        error.backup = write.backup;
    return error;
}

std::vector<JournalEntry> PartlyHeld(Session& session, const std::vector<JournalEntry>& entries) {
    if (entries.empty()) // a read takes time
        return {};
    const KeyboardIdentity identity = session.ReadIdentity();
    std::vector<JournalEntry> suspects;
    KeyboardContent places;
    Stretches known;
    for (const JournalEntry& entry : entries) {
        if (!entry.keyboard.IsLike(identity))
            continue;
        suspects.push_back(entry);
        for (const ByteRange& range : entry.ranges) {
            Stretches wanted;
            wanted.Add(range.address, range.Size());
            for (const Stretch& stretch : wanted.Without(known))
                places.pieces.push_back(
                    {range.module, range.section, stretch.address,
                     std::string(static_cast<std::size_t>(stretch.size), '\0')});
            known.Add(range.address, range.Size());
        }
    }
    if (suspects.empty())
        return {};
    const KeyboardContent now = session.ReadPlaces(places);
    std::erase_if(suspects, [&](const JournalEntry& entry) {
        return entry.TraceInRanges(now) != Trace::Partial ||
               entry.TraceIn(session.ReadPlaces(entry.Areas())) != Trace::Partial;
    });
    return suspects;
}

std::vector<JournalEntry> Candidates(const std::vector<JournalEntry>& held,
                                     const std::string& sOrigin) {
    std::vector<JournalEntry> candidates;
    for (auto entry = held.rbegin(); entry != held.rend(); ++entry) {
        if (IsReplaced(*entry, held))
            continue;
        const auto alike =
            std::find_if(candidates.begin(), candidates.end(),
                         [&](const JournalEntry& other) { return other.IsAlike(*entry); });
        if (alike == candidates.end())
            candidates.push_back(*entry);
        else if (alike->origin != sOrigin && entry->origin == sOrigin)
            *alike = *entry;
    }
    return candidates;
}

} // namespace qx::host
