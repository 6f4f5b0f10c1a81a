// What a driver library may offer beyond the functions of every driver.
#pragma once

#include "qxcontrols/device/DriverLibrary.h"

#include <optional>
#include <string>

namespace qx::driverhost {

// The meaning of a status in words; the empty text from a library that explains none.
[[nodiscard]] std::string StatusText(const DriverLibrary& library, std::int32_t lStatus);

// Tells a library that is itself a simulated keyboard which file to keep it in, and of which model
// it is when new. Its status, or none from a library that takes no file.
[[nodiscard]] std::optional<std::int32_t>
SetKeyboard(const DriverLibrary& library, const std::string& file, const std::string& model);

} // namespace qx::driverhost
