// Journal: the writes that have begun and are not known to have ended.
//
// An entry is on the disk before the first byte is sent and goes when the write has been verified,
// so that after a crash or a pulled cable it is known what the keyboard may hold: in each range the
// old bytes, the new ones, or some of each.
#pragma once

#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qx::host {

struct JournalEntry {
    std::string time;
    std::string action;        // "download"
    std::string document;      // the name of what is written
    std::string backup;        // the id of the backup made before
    KeyboardIdentity keyboard; // before the write
    std::vector<ByteRange> ranges;
    std::string restHash; // of all bytes outside the ranges

    std::filesystem::path file; // where it is kept

    // Whether a keyboard that holds this can be the one: the same GUID, or, without one, one that
    // holds nothing but old and new bytes, and outside the ranges what it held.
    [[nodiscard]] bool BelongsTo(const KeyboardContent& now) const;
    [[nodiscard]] bool Explains(const KeyboardContent& now) const;
    // The content with the old, or the new, bytes in the ranges.
    [[nodiscard]] KeyboardContent RolledBack(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Finished(KeyboardContent content) const;
    // Takes the hash of what the ranges leave out.
    [[nodiscard]] std::string RestHashOf(KeyboardContent content) const;
};

class Journal {
public:
    explicit Journal(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Records the write, whose ranges are to be set. The entry is on the disk when this returns.
    void Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const;
    void End(const JournalEntry& entry) const { RemoveRecord(entry.file); }

    // The writes that have not ended, oldest first. Throws Error(FileFailed) for an entry that
    // cannot be read: what it says about its keyboard is not to be passed over.
    [[nodiscard]] std::vector<JournalEntry> Entries() const;
    // The newest one of this keyboard.
    [[nodiscard]] std::optional<JournalEntry> Find(const KeyboardContent& now) const;

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
