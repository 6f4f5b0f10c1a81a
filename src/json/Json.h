// JSON as these programs read and write it: members keep the order in which they are written.
#pragma once

#include "json/Fault.h"

#include <nlohmann/json.hpp>

#include <string>
#include <string_view>

namespace qx::json {

using Json = nlohmann::ordered_json;

// Reads JSON that names no member twice (of two values nobody could tell which was meant), and in
// which objects and lists are nested at most 64 deep, with at most 10000 members in an object, and
// no more than `most` bytes. Throws FaultError.
[[nodiscard]] Json ParseStrictly(std::string_view text, std::size_t most);

// The JSON pointer to a member of what is at `place`.
[[nodiscard]] std::string JsonPointer(const std::string& place, std::string_view key);

// The value as text for people and for version control: two blanks a level, and a list of plain
// values on one line. Ends with a line feed. Bytes of a text that are not UTF-8, as file names may
// have, become U+FFFD.
[[nodiscard]] std::string PrettyText(const Json& value);

// The beginning of the value's text, for messages.
[[nodiscard]] std::string ShortText(const Json& value);

// `place`, `code` and `message`.
[[nodiscard]] Json ToJson(const Fault& fault);

} // namespace qx::json
