// Journal: the writes that have begun and are not known to have ended.
//
// An entry is on the disk before the first byte is sent and goes when the write has been verified,
// so that after a crash or a pulled cable it is known what the keyboard may hold: in each range the
// old bytes, the new ones, or some of each.
#pragma once

#include "files/Files.h"
#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace qx::host {

struct JournalEntry {
    std::string time;
    std::string action;                // "download"
    std::string document;              // the name of what is written
    std::string backup;                // the id of the backup made before
    std::optional<std::string> origin; // how the keyboard was reached; older entries do not tell
    KeyboardIdentity keyboard;         // before the write
    std::string guidAfter;             // the one that the write gives it, or the same
    std::vector<ByteRange> ranges;
    std::string restHash; // of all bytes outside the ranges

    std::filesystem::path file; // where it is kept

    // Whether the write was to the keyboard that holds this and is reached so: the same GUID, or,
    // where it has none, the same origin. What it holds need not come from the write.
    [[nodiscard]] bool IsOf(const KeyboardContent& now, const std::string& sOrigin) const;
    // Whether the keyboard holds nothing but old and new bytes, and outside the ranges what it
    // held: only then is it known what finishing and rolling back lead to.
    [[nodiscard]] bool Explains(const KeyboardContent& now) const;
    // The content with the old, or the new, bytes in the ranges.
    [[nodiscard]] KeyboardContent RolledBack(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Finished(KeyboardContent content) const;
    // Takes the hash of what the ranges leave out.
    [[nodiscard]] std::string RestHashOf(KeyboardContent content) const;
};

class Journal {
public:
    // The folders of the entries, and of what is locked while a keyboard is claimed.
    Journal(std::filesystem::path folder, std::filesystem::path locks)
        : m_folder(std::move(folder)), m_locks(std::move(locks)) {}

    // The right to write to the keyboard, for as long as it is kept; null while another has it.
    // Throws Error(FileFailed).
    [[nodiscard]] std::unique_ptr<files::FileLock> Claim(const KeyboardIdentity& keyboard) const;
    // Whether the write is still going on.
    [[nodiscard]] bool IsInProgress(const JournalEntry& entry) const;

    // Records the write, whose ranges are to be set. The entry is on the disk when this returns.
    void Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const;
    void End(const JournalEntry& entry) const { RemoveRecord(entry.file); }

    // The writes that have not ended, oldest first. Entries that cannot be used are added to
    // `damaged`.
    [[nodiscard]] std::vector<JournalEntry>
    Entries(std::vector<DamagedRecord>* damaged = nullptr) const;
    // Whether a damaged entry may be of this keyboard.
    [[nodiscard]] static bool MayBeOf(const DamagedRecord& damaged,
                                      const KeyboardIdentity& keyboard);

private:
    std::filesystem::path m_folder;
    std::filesystem::path m_locks;
};

} // namespace qx::host
