#include "host/BackupStore.h"

#include "files/Files.h"
#include "host/Error.h"

#include <algorithm>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

constexpr RecordFormat kFormat = {"qx-backup", 2, 2};
constexpr std::string_view kAreasEnding = ".areas.json";
constexpr std::string_view kDocumentEnding = ".json";

} // namespace

std::string BackupStore::Save(const KeyboardContent& content, const ConfigurationDocument& document,
                              Time time, const std::set<std::string>& needed) {
    const std::string keyboard = content.identity.FileName();
    const fs::path folder = m_folder / keyboard;
    const std::string name =
        WriteNewFile(folder, time, std::string(kDocumentEnding), document.ToText()).stem().string();
    Json members = {{"time", TimeText(time)}};
    members.update(ToJson(content));
    WriteRecord(folder / (name + std::string(kAreasEnding)), kFormat, members);
    std::set<std::string> kept = needed;
    kept.insert(keyboard + "/" + name);
    Prune(keyboard, kept);
    return keyboard + "/" + name;
}

void BackupStore::Prune(const std::string& keyboard, const std::set<std::string>& needed) const {
    std::error_code ignored; // what stays is tried again at the next backup
    for (const fs::path& file : RecordsIn(m_folder / keyboard, kDocumentEnding)) {
        const std::string name = file.stem().string();
        const bool isDocument = !file.string().ends_with(kAreasEnding);
        if (isDocument && !fs::exists(AreasOf({"", keyboard, name, {}}), ignored))
            fs::remove(file, ignored); // of a backup that broke off
    }
    const auto entries = ListOf(keyboard);
    for (std::size_t i = 0; i + kKept < entries.size(); ++i) {
        if (needed.contains(entries[i].id))
            continue;
        fs::remove(AreasOf(entries[i]), ignored);
        fs::remove(entries[i].document, ignored);
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

KeyboardContent BackupStore::Load(const BackupEntry& entry) const {
    KeyboardContent content;
    ReadRecord(AreasOf(entry), kFormat,
               [&](const Json& record) { content = ContentFromJson(record); });
    return content;
}

} // namespace qx::host
