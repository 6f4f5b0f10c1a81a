// Optional functions of a driver library, beyond those of every driver.
#pragma once

#include "files/Problem.h"
#include "qxcontrols/device/DriverLibrary.h"

#include <optional>
#include <string>

namespace qx::driverhost {

// Why the library cannot be loaded.
[[nodiscard]] files::Problem ProblemOf(const LibraryError& error, const std::string& library);

// The meaning of a status; empty if the library does not explain it.
[[nodiscard]] std::string StatusText(const DriverLibrary& library, std::int32_t lStatus);

// For a library that is a simulated keyboard: sets the file to store it in, and the model for a new
// file. Returns the library's status; none if the library does not support this.
[[nodiscard]] std::optional<std::int32_t>
SetKeyboard(const DriverLibrary& library, const std::string& file, const std::string& model);

} // namespace qx::driverhost
