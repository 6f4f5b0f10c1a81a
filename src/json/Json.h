// JSON as used by these programs: members keep their order.
#pragma once

#include "json/Fault.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace qx::json {

using Json = nlohmann::ordered_json;

// Parses JSON without duplicate members (which would be ambiguous), with objects and lists nested
// at most 64 deep, at most 10000 members per object, and at most `most` bytes. Throws FaultError.
[[nodiscard]] Json ParseStrictly(std::string_view text, std::size_t most);

// The JSON pointer to a member of the value at `place`.
[[nodiscard]] std::string JsonPointer(const std::string& place, std::string_view key);

// The value as text for people and for version control: indented by two spaces per level, with
// lists of plain values on one line. Ends with a line feed. Invalid UTF-8, which file names may
// contain, becomes U+FFFD.
[[nodiscard]] std::string PrettyText(const Json& value);

// The beginning of the value's text, for messages.
[[nodiscard]] std::string ShortText(const Json& value);

// `place`, `code`, `arguments` and `message`.
[[nodiscard]] Json ToJson(const Fault& fault);

} // namespace qx::json
