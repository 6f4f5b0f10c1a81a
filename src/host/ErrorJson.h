// ErrorJson: errors as JSON, in results, in reports, and between processes. Reading returns an
// error equal to the one that was written, except for bytes that are not UTF-8.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "json/Reader.h"

#include <optional>
#include <vector>

namespace qx::host {

[[nodiscard]] Json ToJson(const Error& error);
[[nodiscard]] Json ToJson(const std::vector<Error>& errors);

// Faults are recorded at the value; the result is then empty.
[[nodiscard]] std::optional<Error> ErrorFrom(const json::Value& value);
[[nodiscard]] std::vector<Error> ErrorsFrom(const json::Value& value);

} // namespace qx::host
