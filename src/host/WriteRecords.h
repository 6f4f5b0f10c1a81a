// WriteRecords: the stores for all records of writes, for any keyboard.
#pragma once

#include "host/BackupStore.h"
#include "host/Claims.h"
#include "host/Journal.h"
#include "host/Receipts.h"

#include <filesystem>
#include <optional>

namespace qx::host {

struct WriteRecords {
    explicit WriteRecords(const std::filesystem::path& folder)
        : backups(folder / "backups"), journal(folder / "journal"), claims(folder / "locks"),
          receipts(folder / "receipts") {}

    // Whether the write is still in progress.
    [[nodiscard]] bool IsInProgress(const JournalEntry& entry) const {
        return claims.IsTaken(Claims::NameOf(entry.keyboard, entry.origin));
    }
    // Deletes the entry at the user's demand. Throws Error(KeyboardBusy) if the write is in
    // progress.
    void Forget(const JournalEntry& entry) const;
    // The backups named in the other records; none if one of these cannot be read.
    [[nodiscard]] std::optional<BackupStore::Named> NamedBackups() const;

    BackupStore backups;
    Journal journal;
    Claims claims;
    Receipts receipts;
};

} // namespace qx::host
