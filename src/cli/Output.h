// What several commands write in the same way.
#pragma once

#include "cli/Context.h"

namespace qx::cli {

// Writes the document into the file, or as the result when `file` is empty. `direction` says what
// was moved where, for the message.
void WriteDocument(Context& context, const host::ConfigurationDocument& document,
                   const std::string& file, const std::string& direction);

// Rows of cells as lines, with the cells of each column below one another.
[[nodiscard]] std::string AlignedText(const std::vector<std::vector<std::string>>& rows);

// "3 settings", "1 setting".
[[nodiscard]] std::string Counted(std::size_t count, const std::string& noun);

} // namespace qx::cli
