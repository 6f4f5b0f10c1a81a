// What several commands write in the same way.
#pragma once

#include "cli/Context.h"
#include "host/WritePlan.h"

namespace qx::cli {

// Throws host::Error(Usage) for the file of a simulated keyboard, which no result replaces.
void RefuseKeyboardFile(const std::string& file);

// Writes the document into the file, or as the result when `file` is empty or standard output.
// `direction` says what was moved where, for the message.
void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction);

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
