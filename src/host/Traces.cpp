#include "host/Traces.h"

#include "host/Stretches.h"

namespace qx::host {

std::vector<JournalEntry> Suspects(Session& session, const std::vector<JournalEntry>& entries) {
    if (entries.empty()) // a reading takes its time
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
        return entry.TraceInRanges(now) != Trace::Partial;
    });
    return suspects;
}

} // namespace qx::host
