// BackupStore: the contents of keyboards before they were written to.
//
// A backup is two files in its keyboard's folder, named by the time: the configuration document,
// for people and for other keyboards, and the bytes of all areas, from which the keyboard is
// restored. The bytes are written last; a document without them is not a backup. Keyboards named in
// a job have a folder per name, so that keyboards without an identifier are kept apart.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"
#include "host/Till.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qx::host {

struct Backup {
    KeyboardContent content;
    std::string document; // the name of the document written afterwards
    std::string origin;   // the keyboard's connection
    Till till;
};

struct BackupEntry {
    std::string id;       // "QX-POS-FULL-0123456789ab/20260131T090507.123Z-4711-1"
    std::string keyboard; // the keyboard's name for files
    std::string time;     // as in the id
    std::filesystem::path document;
};

class BackupStore {
public:
    // A backup is deleted when it is older than this, and backups of its keyboard were made on this
    // many days that are at least as much later; a clock that is wrong once cannot cause that. A
    // backup named by a receipt counts as no older than the receipt.
    static constexpr int kDays = 90;
    static constexpr std::size_t kLaterDays = 30;

    explicit BackupStore(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // The ids named in records, with the time of the newest such record, or empty if the backup is
    // needed at any age.
    using Named = std::map<std::string, std::string>;
    // None if this cannot be determined; then no backup is deleted.
    using AskNamed = std::function<std::optional<Named>()>;

    // Saves a backup and returns its id once it is on the disk. Deletes old ones; `named` is called
    // only if some would be deleted. Throws Error(FileFailed) if nothing was saved.
    std::string Save(const Backup& backup, const ConfigurationDocument& document, Time time,
                     const AskNamed& named) const;

    // All backups, sorted by keyboard and time.
    [[nodiscard]] std::vector<BackupEntry> List() const;
    // The backup with this id. Throws Error(Usage) if there is none.
    [[nodiscard]] BackupEntry Find(const std::string& id) const;
    // Throws Error(FileFailed) if the backup is damaged.
    [[nodiscard]] Backup Load(const BackupEntry& entry) const;

private:
    [[nodiscard]] std::vector<BackupEntry> ListOf(const std::string& keyboard) const;
    [[nodiscard]] std::filesystem::path AreasOf(const BackupEntry& entry) const;
    void Prune(const std::string& keyboard, Time time, const AskNamed& askNamed) const;

    std::filesystem::path m_folder;
};

} // namespace qx::host
