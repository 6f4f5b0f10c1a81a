// VisibleText: text from outside (keyboards, documents, file names) as it can be shown to people.
//
// Control characters, characters that change the direction of writing, invisible ones, and bytes
// that are not UTF-8 are written as escapes, so that no text can move the cursor, add a line or
// pass for another text.
#pragma once

#include <string>
#include <string_view>

namespace qx::host {

// Whether the character is never shown as it is.
[[nodiscard]] bool IsHidden(char32_t character);

// The text on one line, as UTF-8: "\u001b" for a character that is not shown, "\xff" for a byte
// that is not UTF-8. All else is unchanged, backslashes too.
[[nodiscard]] std::string VisibleText(std::string_view text);

// The same of several lines. Of JSON this leaves the meaning as it was.
[[nodiscard]] std::string VisibleLines(std::string_view text);

// The text as UTF-8: only bytes that are not UTF-8 are escaped.
[[nodiscard]] std::string Utf8Text(std::string_view text);

} // namespace qx::host
