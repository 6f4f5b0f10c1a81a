#include "host/Journal.h"

#include "host/Error.h"
#include "host/HexText.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <thread>

namespace qx::host {

namespace {

constexpr RecordFormat kFormat = {"qx-journal", 2, 2};
constexpr std::string_view kEnding = ".journal.json";

// The name for all keyboards of this kind, whatever their GUIDs.
std::string KindName(KeyboardIdentity keyboard) {
    keyboard.guid.clear();
    return keyboard.FileName();
}

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

bool JournalEntry::IsOf(const KeyboardContent& now, const std::string& sOrigin) const {
    if (!keyboard.IsLike(now.identity))
        return false;
    const std::string& guid = now.identity.guid;
    if (!guid.empty() && (guid == keyboard.guid || guid == guidAfter))
        return true;
    if (guidAfter == keyboard.guid && guid != keyboard.guid)
        return false;
    const bool isSameOrigin = origin ? *origin == sOrigin : Explains(now);
    // A write that gives another GUID may have left a part of it.
    return isSameOrigin && (guid == keyboard.guid || Explains(now));
}

std::unique_ptr<files::FileLock> Journal::Claim(const KeyboardIdentity& keyboard) const {
    constexpr int kTries = 20; // who only looks whether it is claimed keeps it for a moment
    try {
        files::MakeFolder(m_locks);
        auto lock = std::make_unique<files::FileLock>(m_locks / keyboard.FileName());
        for (int i = 0; i < kTries; ++i) {
            if (lock->TryLock())
                return lock;
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return nullptr;
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
}

bool Journal::IsInProgress(const JournalEntry& entry) const {
    try {
        files::MakeFolder(m_locks);
        return !files::FileLock(m_locks / entry.keyboard.FileName()).TryLock();
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
}

void Journal::Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const {
    entry.time = TimeText(time);
    entry.keyboard = before.identity;
    entry.guidAfter = entry.Finished(before).identity.guid;
    entry.restHash = entry.RestHashOf(before);
    Json ranges = Json::array();
    for (const ByteRange& range : entry.ranges)
        ranges.push_back(ToJson(range));
    const std::string keyboard = entry.guidAfter == entry.keyboard.guid ? entry.keyboard.FileName()
                                                                        : KindName(entry.keyboard);
    entry.file = WriteNewRecord(m_folder, time, "." + keyboard + std::string(kEnding), kFormat,
                                {{"time", entry.time},
                                 {"action", entry.action},
                                 {"document", entry.document},
                                 {"backup", entry.backup},
                                 {"origin", entry.origin.value_or("")},
                                 {"keyboard", ToJson(entry.keyboard)},
                                 {"guidAfter", ToHexText(entry.guidAfter)},
                                 {"rest", entry.restHash},
                                 {"ranges", ranges}});
}

std::vector<JournalEntry> Journal::Entries(std::vector<DamagedRecord>* damaged) const {
    std::vector<JournalEntry> entries;
    const auto read = [&](const std::filesystem::path& file, const Json& record) {
        JournalEntry entry;
        entry.file = file;
        entry.time = record.at("time").get<std::string>();
        entry.action = record.at("action").get<std::string>();
        entry.document = record.at("document").get<std::string>();
        entry.backup = record.at("backup").get<std::string>();
        entry.keyboard = IdentityFromJson(record.at("keyboard"));
        entry.restHash = record.at("rest").get<std::string>();
        for (const Json& range : record.at("ranges"))
            entry.ranges.push_back(RangeFromJson(range));
        entry.guidAfter = entry.keyboard.guid;
        if (record.at("version") > 1) { // the first one does not tell these
            entry.origin = record.at("origin").get<std::string>();
            entry.guidAfter = FromHexText(record.at("guidAfter").get<std::string>());
        }
        entries.push_back(std::move(entry));
    };
    const auto unusable = ReadRecords(m_folder, kEnding, kFormat, read);
    if (damaged != nullptr)
        damaged->insert(damaged->end(), unusable.begin(), unusable.end());
    return entries;
}

bool Journal::MayBeOf(const DamagedRecord& damaged, const KeyboardIdentity& keyboard) {
    std::string name = damaged.file.filename().string();
    name.resize(name.size() - kEnding.size());
    const bool isNamed = std::count(name.begin(), name.end(), '.') > 1; // older ones are not
    return !isNamed || name.ends_with("." + keyboard.FileName()) ||
           name.ends_with("." + KindName(keyboard));
}

} // namespace qx::host
