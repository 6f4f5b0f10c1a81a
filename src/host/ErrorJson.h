// ErrorJson: errors as JSON, in results, in reports, and between processes. An error that was read
// is equal to the one that was written, but for bytes that are not UTF-8.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "json/Reader.h"

#include <optional>
#include <vector>

namespace qx::host {

[[nodiscard]] Json ToJson(const Error& error);
[[nodiscard]] Json ToJson(const std::vector<Error>& errors);

// Faults are recorded at the value; an error that has any is none.
[[nodiscard]] std::optional<Error> ErrorFrom(const json::Value& value);
[[nodiscard]] std::vector<Error> ErrorsFrom(const json::Value& value);

} // namespace qx::host
