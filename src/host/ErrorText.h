// ErrorText: errors in English. It names no commands, options or buttons: these belong to the user
// interfaces, which word the suggestions.
#pragma once

#include "host/Error.h"

#include <string>

namespace qx::host {

struct JournalEntry;
struct NotRestored;

// The whole error on one line: the error itself, the keyboard's contents, and other failures. It is
// a VisibleText.
[[nodiscard]] std::string TextOf(const Error& error);

// "download of till.json for till 42 (begun 2026-01-31T09:05:07.123Z)"
[[nodiscard]] std::string InWords(const WriteName& write);
[[nodiscard]] std::string InWords(const JournalEntry& entry);

[[nodiscard]] std::string TextOf(const NotRestored& part);

} // namespace qx::host
