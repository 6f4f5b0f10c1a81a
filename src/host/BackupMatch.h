// BackupMatch: whether a backup belongs to the connected keyboard.
#pragma once

#include "host/BackupStore.h"
#include "host/InterruptedWrites.h"
#include "host/Receipts.h"

#include <optional>
#include <string>

namespace qx::host {

// Throws Error(KeyboardChanged) if the backup is of another model.
void RequireSameKind(const Backup& backup, const KeyboardContent& now);

// Why the backup seems to belong to a keyboard other than the one with these contents, if it does:
// it has another GUID or connection, or belongs to a unit that, according to the records, is not
// this keyboard. A keyboard with part of an interrupted write is the one of the backup made before
// that write.
[[nodiscard]] std::optional<Error>
WhyOfOtherKeyboard(const Backup& backup, const KeyboardContent& now, const std::string& sOrigin,
                   const Receipts& receipts, const InterruptedWrites& interrupted);

} // namespace qx::host
