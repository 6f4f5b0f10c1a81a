// ErrorText: errors in English. It names no command, option or button: these belong to the faces,
// which word suggestions.
#pragma once

#include "host/Error.h"

#include <string>

namespace qx::host {

struct JournalEntry;
struct NotRestored;

// The whole error on one line: what went wrong, what the keyboard holds, and what else failed. It
// is a VisibleText.
[[nodiscard]] std::string TextOf(const Error& error);

// "download of till.json for till 42 of 2026-01-31T09:05:07.123Z"
[[nodiscard]] std::string InWords(const WriteName& write);
[[nodiscard]] std::string InWords(const JournalEntry& entry);

[[nodiscard]] std::string TextOf(const NotRestored& part);

} // namespace qx::host
