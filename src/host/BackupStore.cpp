#include "host/BackupStore.h"

#include "files/Sha256.h"
#include "host/Error.h"

#include <chrono>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

constexpr RecordFormat kFormat = {"qx-backup", 1, true};
constexpr std::string_view kAreasEnding = ".areas.json";
constexpr std::string_view kDocumentEnding = ".json";
constexpr std::size_t kDayDigits = 8; // at the beginning of a name

// A name for files that is another for each name of a unit.
std::string FileNameOf(const std::string& unit) {
    constexpr std::size_t kMost = 40;
    constexpr std::size_t kHashDigits = 8;
    std::string name = unit.substr(0, kMost);
    for (char& c : name)
        if (!(c >= '0' && c <= '9') && !(c >= 'a' && c <= 'z') && !(c >= 'A' && c <= 'Z'))
            c = '-';
    return name == unit ? name : name + "-" + files::Sha256(unit).substr(0, kHashDigits);
}

} // namespace

std::string BackupStore::Save(const Backup& backup, const ConfigurationDocument& document,
                              Time time, const Needed& needed) {
    const std::string& unit = backup.till.unit;
    const std::string keyboard =
        backup.content.identity.FileName() + (unit.empty() ? "" : "." + FileNameOf(unit));
    const fs::path folder = m_folder / keyboard;
    const std::string name =
        WriteNewFile(folder, time, std::string(kDocumentEnding), document.ToText()).stem().string();
    Json members = {{"time", TimeText(time)},
                    {"document", backup.document},
                    {"origin", backup.origin},
                    {"unit", unit},
                    {"place", backup.till.place}};
    members.update(ToJson(backup.content));
    WriteNewRecord(folder / (name + std::string(kAreasEnding)), kFormat, members);
    Prune(keyboard, time, needed);
    return keyboard + "/" + name;
}

void BackupStore::Prune(const std::string& keyboard, Time time, const Needed& needed) const {
    const std::string oldest = TimeFileName(time - std::chrono::hours(24 * kDays));
    std::vector<BackupEntry> old;
    std::set<std::string> days; // of those that are not older than any in `old`
    const auto entries = ListOf(keyboard);
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        const std::string day = entry->time.substr(0, kDayDigits);
        if (entry->time < oldest && days.size() - days.count(day) >= kLaterDays)
            old.push_back(*entry);
        days.insert(day);
    }
    if (old.empty())
        return;
    const auto kept = needed();
    if (!kept)
        return;
    std::error_code ignored; // what stays is tried again at the next backup
    for (const BackupEntry& entry : old)
        if (!kept->contains(entry.id)) {
            fs::remove(AreasOf(entry), ignored);
            fs::remove(entry.document, ignored);
        }
}

std::vector<BackupEntry> BackupStore::ListOf(const std::string& keyboard) const {
    std::vector<BackupEntry> entries;
    for (const fs::path& file : RecordsIn(m_folder / keyboard, kAreasEnding)) {
        std::string name = file.filename().string();
        name.resize(name.size() - kAreasEnding.size());
        entries.push_back({keyboard + "/" + name, keyboard, name,
                           m_folder / keyboard / (name + std::string(kDocumentEnding))});
    }
    return entries;
}

std::vector<BackupEntry> BackupStore::List() const {
    std::vector<BackupEntry> all;
    for (const fs::path& folder : RecordsIn(m_folder, "")) {
        if (!fs::is_directory(folder))
            continue;
        const auto entries = ListOf(folder.filename().string());
        all.insert(all.end(), entries.begin(), entries.end());
    }
    return all;
}

BackupEntry BackupStore::Find(const std::string& id) const {
    for (const BackupEntry& entry : List())
        if (entry.id == id)
            return entry;
    throw Error(ErrorKind::Usage, "there is no backup " + id);
}

fs::path BackupStore::AreasOf(const BackupEntry& entry) const {
    return m_folder / entry.keyboard / (entry.time + std::string(kAreasEnding));
}

Backup BackupStore::Load(const BackupEntry& entry) const {
    Backup backup;
    ReadRecord(AreasOf(entry), kFormat, [&](const Json& record) {
        const auto text = [&](const char* key) { return record.at(key).get<std::string>(); };
        backup = {ContentFromJson(record),
                  text("document"),
                  text("origin"),
                  {text("unit"), text("place")}};
    });
    return backup;
}

} // namespace qx::host
