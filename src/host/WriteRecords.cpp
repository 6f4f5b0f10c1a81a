#include "host/WriteRecords.h"

#include "host/Error.h"

#include <algorithm>
#include <string>
#include <vector>

namespace qx::host {

void WriteRecords::Forget(const JournalEntry& entry) const {
    const Claim claim = claims.Take(Claims::NameOf(entry.keyboard, entry.origin));
    if (!claim)
        throw Error(Cause::WriteInProgress, {.writes = {entry.Name()}});
    journal.End(entry);
}

std::optional<BackupStore::Named> WriteRecords::NamedBackups() const {
    std::vector<DamagedRecord> damaged;
    BackupStore::Named named;
    for (const Receipt& receipt : receipts.List(&damaged)) {
        std::string& newest = named[receipt.backup];
        newest = std::max(newest, receipt.time);
    }
    for (const JournalEntry& entry : journal.Entries(&damaged))
        named[entry.backup].clear();
    if (!damaged.empty()) // it might name any backup
        return std::nullopt;
    return named;
}

} // namespace qx::host
