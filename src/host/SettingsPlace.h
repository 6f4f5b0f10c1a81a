// SettingsPlace: the storage of values, a file or the current user's registry.
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
    // Whether it is a file that is not a valid INI file.
    [[nodiscard]] virtual bool IsDamaged() const = 0;
    // The value as last read, when this object was created or stored.
    [[nodiscard]] virtual std::optional<SettingsValue> Find(const std::string& key) const = 0;
    // Stores the values, and keeps those stored by other programs. A damaged file is renamed;
    // returns its new name. Throws Error(FileFailed) naming the place.
    virtual std::filesystem::path Store(const SettingsValues& values) = 0;
};

// An INI file. A file that is not the user's `own` and has text but none of the values' groups is
// of another kind; it is refused when values are stored. Throws Error(FileFailed) if it is not a
// regular file or cannot be read.
[[nodiscard]] std::unique_ptr<SettingsPlace> FileOfSettings(const std::filesystem::path& file,
                                                            bool isOwn);

#ifdef _WIN32
[[nodiscard]] std::unique_ptr<SettingsPlace> RegistryOfSettings();
#endif

} // namespace qx::host
