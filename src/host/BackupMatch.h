// BackupMatch: whether a backup is of the keyboard that is plugged in.
#pragma once

#include "host/BackupStore.h"
#include "host/InterruptedWrites.h"
#include "host/Receipts.h"

#include <optional>
#include <string>

namespace qx::host {

// Throws Error(KeyboardChanged) when the backup is of another kind of keyboard.
void RequireSameKind(const Backup& backup, const KeyboardContent& now);

// Why the backup seems to be of another keyboard than the one that holds this, if it does: it has
// another GUID, was reached in another way, or is of a unit that the records do not show this
// keyboard to be. A keyboard that holds a part of an interrupted write is the one of the backup
// that was made before that write.
[[nodiscard]] std::optional<Error>
WhyOfOtherKeyboard(const Backup& backup, const KeyboardContent& now, const std::string& sOrigin,
                   const Receipts& receipts, const InterruptedWrites& interrupted);

} // namespace qx::host
