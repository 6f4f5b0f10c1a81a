#include "host/Journal.h"

#include <stdexcept>

namespace qx::host {

namespace {

constexpr RecordFormat kFormat = {"qx-journal", 1};
constexpr std::string_view kEnding = ".journal.json";

} // namespace

KeyboardContent JournalEntry::RolledBack(KeyboardContent content) const {
    for (auto range = ranges.rbegin(); range != ranges.rend(); ++range)
        content.Overwrite(range->address, range->from);
    return content;
}

KeyboardContent JournalEntry::Finished(KeyboardContent content) const {
    for (const ByteRange& range : ranges)
        content.Overwrite(range.address, range.to);
    return content;
}

std::string JournalEntry::RestHashOf(KeyboardContent content) const {
    for (const ByteRange& range : ranges)
        content.Overwrite(range.address, std::string(range.to.size(), '\0'));
    return content.Hash();
}

bool JournalEntry::Explains(const KeyboardContent& now) const {
    try {
        for (const ByteRange& range : ranges) {
            const std::string held = now.Bytes(range.address, range.Size());
            for (std::size_t i = 0; i < held.size(); ++i)
                if (held[i] != range.from[i] && held[i] != range.to[i])
                    return false;
        }
        return RestHashOf(now) == restHash;
    } catch (const std::out_of_range&) { // it has other areas
        return false;
    }
}

bool JournalEntry::BelongsTo(const KeyboardContent& now) const {
    const bool isSameGuid = !keyboard.guid.empty() && now.identity.guid == keyboard.guid;
    return keyboard.IsLike(now.identity) && (isSameGuid || Explains(now));
}

void Journal::Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const {
    entry.time = TimeText(time);
    entry.keyboard = before.identity;
    entry.restHash = entry.RestHashOf(before);
    entry.file = m_folder / (NewRecordName(m_folder, time, kEnding) + std::string(kEnding));
    Json ranges = Json::array();
    for (const ByteRange& range : entry.ranges)
        ranges.push_back(ToJson(range));
    WriteRecord(entry.file, kFormat,
                {{"time", entry.time},
                 {"action", entry.action},
                 {"document", entry.document},
                 {"backup", entry.backup},
                 {"keyboard", ToJson(entry.keyboard)},
                 {"rest", entry.restHash},
                 {"ranges", ranges}});
}

std::vector<JournalEntry> Journal::Entries() const {
    std::vector<JournalEntry> entries;
    for (const auto& file : RecordsIn(m_folder, kEnding)) {
        JournalEntry entry;
        entry.file = file;
        ReadRecord(file, kFormat, [&](const Json& record) {
            entry.time = record.at("time").get<std::string>();
            entry.action = record.at("action").get<std::string>();
            entry.document = record.at("document").get<std::string>();
            entry.backup = record.at("backup").get<std::string>();
            entry.keyboard = IdentityFromJson(record.at("keyboard"));
            entry.restHash = record.at("rest").get<std::string>();
            for (const Json& range : record.at("ranges"))
                entry.ranges.push_back(RangeFromJson(range));
        });
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::optional<JournalEntry> Journal::Find(const KeyboardContent& now) const {
    std::optional<JournalEntry> found;
    for (JournalEntry& entry : Entries())
        if (entry.BelongsTo(now))
            found = std::move(entry);
    return found;
}

} // namespace qx::host
