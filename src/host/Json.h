// JSON as the host layer uses it: members keep the order in which they are written.
#pragma once

#include "host/VisibleText.h"
#include "qxcontrols/common/Utf.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::host {

using Json = nlohmann::ordered_json;

// A text that cannot be used as JSON: where (a JSON pointer, or empty for the whole), and why. Both
// are short, whatever the text is.
class JsonError : public std::runtime_error {
public:
    JsonError(std::string_view place, std::string_view reason)
        : std::runtime_error(Shortened(VisibleText(reason))), m_place(Shortened(place)) {}
    [[nodiscard]] const std::string& Place() const { return m_place; }

private:
    std::string m_place;
};

// Reads JSON that names no member twice (of two values nobody could tell which was meant), and in
// which objects and lists stand in one another at most 64 deep, with at most 10000 members in an
// object. Throws JsonError.
[[nodiscard]] Json ParseStrictly(std::string_view text);

// The JSON pointer to a member of what stands at `place`.
[[nodiscard]] std::string JsonPointer(const std::string& place, std::string_view key);

// The value as text for people and for version control: two blanks a level, and a list of plain
// values on one line. Ends with a line feed. Bytes of a text that are no UTF-8, as file names may
// have, become U+FFFD.
[[nodiscard]] std::string PrettyText(const Json& value);

// The beginning of the value's text, for messages.
[[nodiscard]] std::string ShortText(const Json& value);

} // namespace qx::host
