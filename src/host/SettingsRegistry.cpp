#include "host/Error.h"
#include "host/SettingsPlace.h"
#include "qxcontrols/platform/WindowsRegistry.h"

#include <algorithm>

namespace qx::host {

namespace {

class SettingsRegistry : public SettingsPlace {
public:
    std::string Location() const override { return "the registry of the current user"; }
    bool IsDamaged() const override { return false; }
    std::optional<SettingsValue> Find(const std::string& key) const override {
        const std::string name = Enter(key);
        const Long number = m_registry.ReadNumber(name, 0);
        if (number != 0 || m_registry.ReadNumber(name, 1) == 0)
            return number;
        const std::string text = m_registry.ReadString(name, "");
        if (!text.empty() || m_registry.ReadString(name, "-").empty())
            return text;
        return std::nullopt;
    }
    std::filesystem::path Store(const SettingsValues& values) override {
        for (const auto& [key, value] : values) {
            const std::string name = Enter(key);
            if (const auto* const number = std::get_if<Long>(&value))
                m_registry.WriteNumber(name, *number);
            else
                m_registry.WriteString(name, std::get<std::string>(value));
            if (Find(key) != value)
                throw Error(Cause::PreferenceNotStored,
                            {.name = key, .place = {.file = Location()}});
        }
        return {};
    }

private:
    // Opens the value's key, and returns its name there.
    std::string Enter(const std::string& key) const {
        const std::size_t slash = key.rfind('/');
        std::string path = slash == key.npos ? "" : key.substr(0, slash);
        std::replace(path.begin(), path.end(), '/', '\\');
        m_registry.SetPath(path);
        return key.substr(slash + 1);
    }

    mutable WindowsRegistry m_registry;
};

} // namespace

std::unique_ptr<SettingsPlace> RegistryOfSettings() {
    return std::make_unique<SettingsRegistry>();
}

} // namespace qx::host
