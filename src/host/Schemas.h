// The JSON Schemas (draft 2020-12) of everything that scripts read or write: documents, results,
// errors, jobs, reports, and the records of writes.
//
// The document's is made from the sections' own descriptions; the others are in the folder schemas,
// with the names of errors, faults and so on from the tables in the code.
#pragma once

#include "host/Json.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

// "document", "result", "error", ...
[[nodiscard]] const std::vector<std::string>& SchemaNames();

// The schema of this name, complete in itself.
[[nodiscard]] Json Schema(std::string_view name);

} // namespace qx::host
