// Firmware: the version of a keyboard's firmware, and whether the preferences accept it.
//
// A keyboard reports "P100" for version 1.00; the preferences keep it as the number 0x100.
#pragma once

#include <string>
#include <string_view>

namespace qx {
class QXProgSettings;
}

namespace qx::host {

// "1.00" for 0x100; a number that is not a version is returned as a number.
[[nodiscard]] std::string FirmwareVersionText(int version);
// The inverse, also for digits only ("100"); -1 for a text that is not a version.
[[nodiscard]] int FirmwareVersionOf(std::string_view text);

// Whether the preferences ask for newer firmware than the keyboard reports. One that reports no
// version is never too old.
[[nodiscard]] bool IsFirmwareTooOld(std::string_view program, const QXProgSettings& preferences);

} // namespace qx::host
