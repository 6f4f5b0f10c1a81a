// BackupStore: what keyboards held before they were written to.
//
// A backup is two files in the folder of its keyboard, named by the time: the configuration
// document, for people and for other keyboards, and the bytes of all areas, from which the keyboard
// is restored. The bytes are written last; a document without them is no backup.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

struct BackupEntry {
    std::string id;       // "QX-POS-FULL-0123456789ab/20260131T090507.123Z"
    std::string keyboard; // its name for files
    std::string time;     // as in the id
    std::filesystem::path document;
};

class BackupStore {
public:
    // Of each keyboard so many are kept; the oldest goes.
    static constexpr std::size_t kKept = 50;

    explicit BackupStore(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Saves a backup and returns its id; it is on the disk by then. Old ones go, except those of
    // `needed`. The caller has claimed the keyboard. Throws Error(FileFailed), and then none was
    // saved.
    std::string Save(const KeyboardContent& content, const ConfigurationDocument& document,
                     Time time, const std::set<std::string>& needed);

    // All backups, by keyboard and time.
    [[nodiscard]] std::vector<BackupEntry> List() const;
    // The one of this id. Throws Error(Usage) when there is none.
    [[nodiscard]] BackupEntry Find(const std::string& id) const;
    // The bytes. Throws Error(FileFailed) for a backup that is damaged.
    [[nodiscard]] KeyboardContent Load(const BackupEntry& entry) const;

private:
    [[nodiscard]] std::vector<BackupEntry> ListOf(const std::string& keyboard) const;
    [[nodiscard]] std::filesystem::path AreasOf(const BackupEntry& entry) const;
    void Prune(const std::string& keyboard, const std::set<std::string>& needed) const;

    std::filesystem::path m_folder;
};

} // namespace qx::host
