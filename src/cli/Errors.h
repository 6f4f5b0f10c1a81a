// Errors as reported by the command line: as text with its commands and options, and as an exit
// status. Their JSON is that of host/ErrorJson.h.
#pragma once

#include "host/Error.h"

#include <string>

namespace qx::cli {

// An error in an argument.
[[nodiscard]] host::Error UsageError(const std::string& text);

// The whole message: the error, and a remedy that the user can type, if there is one.
[[nodiscard]] std::string MessageOf(const host::Error& error);

// The program's exit status for an error.
[[nodiscard]] int ExitStatusOf(host::ErrorKind kind);

} // namespace qx::cli
