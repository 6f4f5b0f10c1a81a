// SettingsPlace: where values are kept, a file or the registry of the current user.
#pragma once

#include "qxcontrols/common/Types.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace qx::host {

using SettingsValue = std::variant<Long, std::string>;
// Keys have "/" between their parts.
using SettingsValues = std::vector<std::pair<std::string, SettingsValue>>;

class SettingsPlace {
public:
    virtual ~SettingsPlace() = default;

    // The file or registry key, for messages.
    [[nodiscard]] virtual std::string Location() const = 0;
    // Whether it is a file that is no INI file.
    [[nodiscard]] virtual bool IsDamaged() const = 0;
    // The value, as it was when it was last read: when this object was made, or stored.
    [[nodiscard]] virtual std::optional<SettingsValue> Find(const std::string& key) const = 0;
    // Stores the values, and keeps those that other programs have stored. A damaged file is set
    // aside; returns where. Throws Error(FileFailed) that names the place.
    virtual std::filesystem::path Store(const SettingsValues& values) = 0;
};

// An INI file. One that is not the user's `own`, and has text but no group of the values, belongs
// to somebody else and is refused when they are stored. Throws Error(FileFailed) for what is not an
// ordinary file or cannot be read.
[[nodiscard]] std::unique_ptr<SettingsPlace> FileOfSettings(const std::filesystem::path& file,
                                                            bool isOwn);

#ifdef _WIN32
[[nodiscard]] std::unique_ptr<SettingsPlace> RegistryOfSettings();
#endif

} // namespace qx::host
