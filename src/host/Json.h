// JSON as the host layer uses it: members keep the order in which they are written.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace qx::host {

using Json = nlohmann::ordered_json;

// The value as text for people and for version control: two blanks a level, and a list of plain
// values on one line. Ends with a line feed.
[[nodiscard]] std::string PrettyText(const Json& value);

} // namespace qx::host
