// Errors as reported by the command line: as text with its commands and options, as JSON, and as an
// exit status.
#pragma once

#include "host/Error.h"
#include "host/Json.h"

#include <string>

namespace qx::cli {

// An error in an argument.
[[nodiscard]] host::Error UsageError(const std::string& text);

// A remedy that the user can type, as the end of a message; may be empty. `name` is a variable's
// name.
[[nodiscard]] std::string HintOf(host::Suggestion suggestion, const std::string& name = "NAME");
// The whole message.
[[nodiscard]] std::string MessageOf(const host::Error& error);
[[nodiscard]] host::Json ToJson(const host::Error& error);

// The program's exit status for an error.
[[nodiscard]] int ExitStatusOf(host::ErrorKind kind);

} // namespace qx::cli
