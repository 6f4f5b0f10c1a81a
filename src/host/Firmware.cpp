#include "host/Firmware.h"

#include "qxcontrols/settings/QXProgSettings.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace qx::host {

namespace {

constexpr int kHexadecimal = 16;
constexpr int kGreatestMinor = 0xFF;
constexpr std::size_t kDigits = 3; // of a version in a program's name

std::optional<int> HexNumber(std::string_view text) {
    int number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, kHexadecimal);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole && number >= 0 ? std::optional(number) : std::nullopt;
}

std::string HexText(int number) {
    char digits[sizeof number * 2];
    return {digits, std::to_chars(digits, std::end(digits), number, kHexadecimal).ptr};
}

} // namespace

std::string FirmwareVersionText(int version) {
    if (version < 0)
        return std::to_string(version);
    const std::string minor = HexText(version & kGreatestMinor);
    return HexText(version >> 8) + (minor.size() < 2 ? ".0" : ".") + minor;
}

int FirmwareVersionOf(std::string_view text) {
    const std::size_t point = text.find('.');
    const bool hasPoint = point != std::string_view::npos;
    const auto major = hasPoint ? HexNumber(text.substr(0, point)) : std::optional(0);
    const auto minor = HexNumber(hasPoint ? text.substr(point + 1) : text);
    const bool isVersion = major && minor && (!hasPoint || *minor <= kGreatestMinor);
    return isVersion ? (*major << 8) + *minor : -1;
}

bool IsFirmwareTooOld(std::string_view program, const QXProgSettings& preferences) {
    if (!preferences.VerifyFirmware())
        return false;
    const int version =
        FirmwareVersionOf(program.substr(program.size() - std::min(program.size(), kDigits)));
    return version >= 0 && version < preferences.VersionFirmware();
}

} // namespace qx::host
