// Output shared by several commands.
#pragma once

#include "cli/Context.h"
#include "host/WritePlan.h"

namespace qx::cli {

// Throws host::Error(Usage) for the file of a simulated keyboard.
void RefuseKeyboardFile(const std::string& file);
// The same for every file that no result may replace: a keyboard's file or lock, and anything in
// the folders of records.
void RefuseTarget(const Context& context, const std::string& file);
// Throws host::Error(Usage) if the result would replace its own source file.
void RefuseOwnSource(const std::string& source, const std::string& file);

// Writes the document to the file, or as the result if `file` is empty or standard output.
// `direction` describes the transfer for the message.
void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction);

// An unfinished write, as a result.
[[nodiscard]] host::Json ToJson(const host::JournalEntry& entry);

// A setting that two sides have differently, as a result.
[[nodiscard]] host::Json ToJson(const host::Difference& difference);

// The changes of a write, as a result.
[[nodiscard]] host::Json ToJson(const host::WritePlan& plan);
[[nodiscard]] Lines ToLines(const host::WritePlan& plan);

// Rows of cells as lines, with aligned columns.
[[nodiscard]] Lines AlignedLines(const std::vector<std::vector<std::string>>& rows);
void Append(Lines& lines, const Lines& more);

// "3 settings", "1 setting".
template <typename Number>
[[nodiscard]] std::string Counted(Number count, const std::string& noun) {
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

} // namespace qx::cli
