// VisibleText: text from outside (keyboards, documents, file names) in a form that is safe to show.
//
// Control characters, characters that change the writing direction, invisible ones, and bytes that
// are not UTF-8 are escaped, so that no text can move the cursor, add a line or imitate another
// text.
#pragma once

#include <string>
#include <string_view>

namespace qx::host {

// Whether the character is always escaped.
[[nodiscard]] bool IsHidden(char32_t character);

// The text on one line, as UTF-8: "\u001b" for an escaped character, "\xff" for a byte that is not
// UTF-8. Everything else is unchanged, including backslashes.
[[nodiscard]] std::string VisibleText(std::string_view text);

// The same for several lines. The meaning of JSON is unchanged.
[[nodiscard]] std::string VisibleLines(std::string_view text);

// The text as UTF-8; only bytes that are not UTF-8 are escaped.
[[nodiscard]] std::string Utf8Text(std::string_view text);

} // namespace qx::host
