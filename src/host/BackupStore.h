// BackupStore: what keyboards held before they were written to.
//
// A backup is two files in the folder of its keyboard, named by the time: the configuration
// document, for people and for other keyboards, and the bytes of all areas, from which the keyboard
// is restored. The bytes are written last; a document without them is not a backup. Keyboards that
// a job names have a folder for each name, so that those without an identifier stay apart.
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
    std::string document; // the name of what was written after it
    std::string origin;   // how the keyboard was reached
    Till till;
};

struct BackupEntry {
    std::string id;       // "QX-POS-FULL-0123456789ab/20260131T090507.123Z-4711-1"
    std::string keyboard; // its name for files
    std::string time;     // as in the id
    std::filesystem::path document;
};

class BackupStore {
public:
    // A backup goes when it is older than this, and backups of its keyboard were made on so many
    // days that are as much later than it, which no clock that is wrong for once can feign. One
    // that a receipt names is as old as that receipt.
    static constexpr int kDays = 90;
    static constexpr std::size_t kLaterDays = 30;

    explicit BackupStore(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // The ids that records name, with the time of the newest that does, or an empty text where the
    // backup is needed at any age.
    using Named = std::map<std::string, std::string>;
    // Nothing when that cannot be known, and then none goes.
    using AskNamed = std::function<std::optional<Named>()>;

    // Saves a backup and returns its id; it is on the disk by then. Old ones go; `named` is asked
    // only where some would. Throws Error(FileFailed), and then none was saved.
    std::string Save(const Backup& backup, const ConfigurationDocument& document, Time time,
                     const AskNamed& named) const;

    // All backups, by keyboard and time.
    [[nodiscard]] std::vector<BackupEntry> List() const;
    // The one of this id. Throws Error(Usage) when there is none.
    [[nodiscard]] BackupEntry Find(const std::string& id) const;
    // Throws Error(FileFailed) for a backup that is damaged.
    [[nodiscard]] Backup Load(const BackupEntry& entry) const;

private:
    [[nodiscard]] std::vector<BackupEntry> ListOf(const std::string& keyboard) const;
    [[nodiscard]] std::filesystem::path AreasOf(const BackupEntry& entry) const;
    void Prune(const std::string& keyboard, Time time, const AskNamed& askNamed) const;

    std::filesystem::path m_folder;
};

} // namespace qx::host
