// What several commands write in the same way.
#pragma once

#include "cli/Context.h"
#include "host/WritePlan.h"

namespace qx::cli {

// Throws host::Error(Usage) for the file of a simulated keyboard.
void RefuseKeyboardFile(const std::string& file);
// The same for each file that no result may replace: one of a keyboard, the lock of one, and all
// in the folders of records.
void RefuseTarget(const Context& context, const std::string& file);
// Throws host::Error(Usage) where the result would replace the file that it is made from.
void RefuseOwnSource(const std::string& source, const std::string& file);

// Writes the document into the file, or as the result when `file` is empty or standard output.
// `direction` says what was moved where, for the message.
void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction);

// A write that has begun and is not known to have ended, as a result.
[[nodiscard]] host::Json ToJson(const host::JournalEntry& entry);

// A setting that two sides have differently, as a result.
[[nodiscard]] host::Json ToJson(const host::Difference& difference);

// What a write would change, as a result.
[[nodiscard]] host::Json ToJson(const host::WritePlan& plan);
[[nodiscard]] Lines ToLines(const host::WritePlan& plan);

// Rows of cells as lines, with the cells of each column below one another.
[[nodiscard]] Lines AlignedLines(const std::vector<std::vector<std::string>>& rows);
void Append(Lines& lines, const Lines& more);

// "3 settings", "1 setting".
template <typename Number>
[[nodiscard]] std::string Counted(Number count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace qx::cli
