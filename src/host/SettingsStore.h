// SettingsStore: the registry of the current user as a program sees it.
//
// On Windows it is the registry itself, elsewhere an INI file. Every value is stored as a whole
// number or a text; Booleans are the numbers -1 and 0. A hand-edited file is read leniently; every
// number can also be read as a text. Written values wait in memory until Flush stores them all;
// only then is the store locked, read again, and written. So programs that run at the same time
// keep each other's other values, and a value that is written as it was read changes nothing.
#pragma once

#include "host/SettingsPlace.h"
#include "qxcontrols/platform/RegistryAccess.h"

#include <filesystem>
#include <map>
#include <memory>
#include <string>

namespace qx::host {

class SettingsStore : public RegistryAccess {
public:
    // The store of the current user, or the one in `file` (an INI file on every machine), which
    // need not exist, nor its folder. Throws Error(FileFailed) when it is not an ordinary file or
    // cannot be read.
    explicit SettingsStore(const std::filesystem::path& file = {});
    ~SettingsStore() override; // what was not flushed is lost

    // The file or registry key that holds the values, for messages.
    [[nodiscard]] std::string Location() const;
    // Whether nothing has been stored yet.
    [[nodiscard]] bool IsNew() const { return m_known.empty() && !IsDamaged(); }
    // Whether the file is not an INI file. Reading values leaves it as it is and returns the
    // defaults.
    [[nodiscard]] bool IsDamaged() const;
    // Where Flush has kept a damaged file; empty when there was none.
    [[nodiscard]] const std::filesystem::path& DamagedFile() const { return m_damagedFile; }

    // Stores what was written since the last call. A damaged file is kept beside the new one with
    // ".damaged" at its end. Throws Error(FileFailed) that names the place; the values then wait
    // for the next call. The same applies to a `file` with text but none of these groups: it
    // belongs to another program and is not changed.
    void Flush();

    void SetPath(std::string_view sPath) override;
    [[nodiscard]] Long ReadNumber(std::string_view sName, Long lDefault) override;
    [[nodiscard]] std::string ReadString(std::string_view sName,
                                         std::string_view sDefault) override;
    void WriteNumber(std::string_view sName, Long lValue) override;
    void WriteString(std::string_view sName, std::string_view sValue) override;

private:
    struct CaseBlind {
        bool operator()(const std::string& one, const std::string& other) const;
    };
    using Values = std::map<std::string, SettingsValue, CaseBlind>;

    template <typename Kind, typename Convert>
    Kind Read(const std::string& key, const Kind& fallback, Convert convert);
    void Write(const std::string& key, SettingsValue value);

    std::unique_ptr<SettingsPlace> m_place;
    Values m_known;     // as this program last read or stored them
    Values m_waiting;   // to be stored
    std::string m_path; // with "/" between its parts, and at its end
    std::filesystem::path m_damagedFile;
};

} // namespace qx::host
