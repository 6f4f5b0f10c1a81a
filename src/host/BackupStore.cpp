#include "host/BackupStore.h"

#include "files/Sha256.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "json/Members.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <iterator>
#include <set>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

constexpr RecordFormat kFormat = {"qx-backup", 1, true};
constexpr std::string_view kAreasEnding = ".areas.json";
constexpr std::string_view kDocumentEnding = ".json";

using Day = std::chrono::sys_days;
constexpr auto kAge = std::chrono::days(BackupStore::kDays);

// Of "20260131T…" or "2026-01-31T…"; any other text is of a day that never passes.
Day DayOf(std::string time) {
    constexpr std::size_t kDigits = 8;
    std::erase(time, '-');
    unsigned number = 0;
    const char* const end = time.data() + std::min(time.size(), kDigits);
    const auto [read, error] = std::from_chars(time.data(), end, number);
    if (error != std::errc() || read != time.data() + kDigits)
        return Day::max();
    const auto year = std::chrono::year(static_cast<int>(number / 10000));
    return year / std::chrono::month(number / 100 % 100) / std::chrono::day(number % 100);
}

template <typename AnyBackup, typename Visit>
void VisitMembers(AnyBackup& backup, Visit visit) {
    visit("document", backup.document);
    visit("origin", backup.origin);
    visit("unit", backup.till.unit);
    visit("place", backup.till.place);
    visit("keyboard", backup.content.identity);
    visit("areas", backup.content.pieces);
}

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
                              Time time, const AskNamed& named) const {
    const std::string& unit = backup.till.unit;
    const std::string keyboard =
        backup.content.identity.FileName() + (unit.empty() ? "" : "." + FileNameOf(unit));
    const fs::path folder = m_folder / files::PathOf(keyboard);
    const std::string name = files::TextOf(
        WriteNewFile(folder, time, std::string(kDocumentEnding), document.ToText()).stem());
    Json members = {{"time", TimeText(time)}};
    members.update(json::MembersToJson([&](auto visit) { VisitMembers(backup, visit); }));
    WriteNewRecord(folder / files::PathOf(name + std::string(kAreasEnding)), kFormat, members);
    Prune(keyboard, time, named);
    return keyboard + "/" + name;
}

void BackupStore::Prune(const std::string& keyboard, Time time, const AskNamed& askNamed) const {
    const std::vector<BackupEntry> entries = ListOf(keyboard);
    std::set<Day> days;
    for (const BackupEntry& entry : entries)
        days.insert(DayOf(entry.time));
    const Day today = DayOf(TimeFileName(time));
    const auto isOld = [&](Day day) {
        if (today - day <= kAge) // backups that are kept at any age have a recent day
            return false;
        const auto later = days.upper_bound(day + kAge);
        return static_cast<std::size_t>(std::distance(later, days.end())) >= kLaterDays;
    };
    std::vector<BackupEntry> old;
    std::copy_if(entries.begin(), entries.end(), std::back_inserter(old),
                 [&](const BackupEntry& entry) { return isOld(DayOf(entry.time)); });
    if (old.empty())
        return;
    const std::optional<Named> named = askNamed();
    if (!named)
        return;
    std::error_code ignored; // what stays is tried again at the next backup
    for (const BackupEntry& entry : old) {
        const auto record = named->find(entry.id);
        if (record != named->end() && !isOld(DayOf(record->second)))
            continue;
        fs::remove(AreasOf(entry), ignored);
        fs::remove(entry.document, ignored);
    }
}

std::vector<BackupEntry> BackupStore::ListOf(const std::string& keyboard) const {
    std::vector<BackupEntry> entries;
    for (const fs::path& file : RecordsIn(m_folder / files::PathOf(keyboard), kAreasEnding)) {
        std::string name = files::TextOf(file.filename());
        name.resize(name.size() - kAreasEnding.size());
        entries.push_back({keyboard + "/" + name, keyboard, name,
                           m_folder / files::PathOf(keyboard) /
                               files::PathOf(name + std::string(kDocumentEnding))});
    }
    return entries;
}

std::vector<BackupEntry> BackupStore::List() const {
    std::vector<BackupEntry> all;
    for (const fs::path& folder : RecordsIn(m_folder, "")) {
        if (!fs::is_directory(folder))
            continue;
        const auto entries = ListOf(files::TextOf(folder.filename()));
        all.insert(all.end(), entries.begin(), entries.end());
    }
    return all;
}

BackupEntry BackupStore::Find(const std::string& id) const {
    for (const BackupEntry& entry : List())
        if (entry.id == id)
            return entry;
    throw Error(Cause::NoSuchBackup, {.name = id});
}

fs::path BackupStore::AreasOf(const BackupEntry& entry) const {
    return m_folder / files::PathOf(entry.keyboard) /
           files::PathOf(entry.time + std::string(kAreasEnding));
}

Backup BackupStore::Load(const BackupEntry& entry) const {
    Backup backup;
    ReadRecord(AreasOf(entry), kFormat, [&](json::Object& record) {
        (void)record.Find("time"); // which the name has too
        json::TakeMembers(record, [&](auto visit) { VisitMembers(backup, visit); });
    });
    return backup;
}

} // namespace qx::host
