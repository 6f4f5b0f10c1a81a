// WriteRecords: where all records of writes are kept, whatever keyboards they were to.
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

    // Whether the write is still going on.
    [[nodiscard]] bool IsInProgress(const JournalEntry& entry) const {
        return claims.IsTaken(Claims::NameOf(entry.keyboard, entry.origin));
    }
    // Ends the entry on the user's word. Throws Error(KeyboardBusy) while the write is going on.
    void Forget(const JournalEntry& entry) const;
    // The backups that the other records name; nothing where one of these cannot be read.
    [[nodiscard]] std::optional<BackupStore::Named> NamedBackups() const;

    BackupStore backups;
    Journal journal;
    Claims claims;
    Receipts receipts;
};

} // namespace qx::host
