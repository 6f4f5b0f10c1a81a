#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "host/IniFile.h"
#include "host/SettingsPlace.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

// Another program stores its values in a few milliseconds; wait at most one second.
constexpr int kLockTries = 100;
constexpr auto kLockPause = std::chrono::milliseconds(10);

std::string TextIn(const SettingsValue& value) {
    const auto* const number = std::get_if<Long>(&value);
    return number != nullptr ? std::to_string(*number) : std::get<std::string>(value);
}

class SettingsFile : public SettingsPlace {
public:
    SettingsFile(fs::path file, bool isOwn) : m_file(std::move(file)), m_isOwn(isOwn) { Read(); }

    std::string Location() const override { return files::TextOf(m_file); }
    bool IsDamaged() const override { return m_values.IsDamaged(); }
    std::optional<SettingsValue> Find(const std::string& key) const override {
        return m_values.IsDamaged() ? std::nullopt : m_values.Find(key);
    }
    fs::path Store(const SettingsValues& values) override {
        fs::path damaged;
        try {
            Read();
            RefuseForeign(values);
            std::error_code ignored; // the lock file cannot be created either
            fs::create_directories(m_file.parent_path(), ignored);
            fs::path claimed = m_file;
            files::FileLock lock(claimed += ".writing");
            for (int i = 0; i < kLockTries && !lock.TryLock(); ++i)
                std::this_thread::sleep_for(kLockPause);
            Read(); // includes values stored by other programs
            if (IsDamaged())
                damaged = SetAside();
            IniFile changed = m_values;
            for (const auto& [key, value] : values)
                changed.Set(key, TextIn(value));
            files::WriteFileAtomically(m_file, changed.Text());
            m_values = std::move(changed);
        } catch (const Error&) {
            throw;
        } catch (const std::exception& error) {
            throw Error(Cause::PreferencesNotStored, {.problem = files::ProblemOf(error)});
        }
        return damaged;
    }

private:
    void Read() {
        std::error_code ignored;
        const auto status = fs::status(m_file, ignored);
        if (fs::exists(status) && !fs::is_regular_file(status))
            throw Error(Cause::PreferencesNotAFile, {.place = {.file = Location()}});
        try {
            m_values = IniFile(
                fs::exists(status) ? files::ReadFile(m_file, files::kMostOfPreferences) : "");
        } catch (const std::exception& error) {
            throw FileError(error);
        }
    }

    // Storing values in a file of another kind would mix them with its contents.
    void RefuseForeign(const SettingsValues& values) const {
        const bool hasGroup = std::any_of(values.begin(), values.end(), [&](const auto& value) {
            return m_values.HasGroup(value.first.substr(0, value.first.find('/')));
        });
        if (!m_isOwn && !hasGroup && !m_values.IsBlank())
            throw Error(Cause::PreferencesElsewhere, {.place = {.file = Location()}});
    }

    fs::path SetAside() {
        fs::path damaged;
        for (int number = 1; damaged.empty() || fs::exists(damaged); ++number) {
            damaged = m_file;
            damaged += files::PathOf(".damaged" + (number == 1 ? "" : std::to_string(number)));
        }
        std::error_code reason;
        fs::rename(m_file, damaged, reason);
        if (reason)
            throw Error(
                Cause::PreferencesNotSetAside,
                {.problem = {.system = files::ReasonOf(reason)}, .place = {.file = Location()}});
        m_values = IniFile();
        return damaged;
    }

    fs::path m_file;
    bool m_isOwn;
    IniFile m_values;
};

} // namespace

std::unique_ptr<SettingsPlace> FileOfSettings(const fs::path& file, bool isOwn) {
    return std::make_unique<SettingsFile>(file, isOwn);
}

} // namespace qx::host
