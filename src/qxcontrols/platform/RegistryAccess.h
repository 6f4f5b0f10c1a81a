// The registry of the current user: named values under key paths.
#pragma once

#include "qxcontrols/common/Types.h"

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace qx {

// Set the path, then read and write values below it. Names and paths ignore the case of ASCII
// letters. If a value is missing or cannot be read as the requested type, a read returns the
// default.
class RegistryAccess {
public:
    virtual ~RegistryAccess() = default;

    // The key below the current user's hive, parts separated by "\", with or without a final "\".
    virtual void SetPath(std::string_view sPath) = 0;

    [[nodiscard]] virtual Long ReadNumber(std::string_view sName, Long lDefault) = 0;
    [[nodiscard]] virtual std::string ReadString(std::string_view sName,
                                                 std::string_view sDefault) = 0;
    virtual void WriteNumber(std::string_view sName, Long lValue) = 0;
    virtual void WriteString(std::string_view sName, std::string_view sValue) = 0;

    // A Boolean is stored as a number: -1 for true, 0 for false; any number except 0 is read as
    // true.
    [[nodiscard]] bool ReadBoolean(std::string_view sName, bool fDefault);
    void WriteBoolean(std::string_view sName, bool fValue);
};

// A registry in memory: the default for hosts that store no settings, and for tests. A number
// cannot be read as a text, or a text as a number.
class MemoryRegistry : public RegistryAccess {
public:
    void SetPath(std::string_view sPath) override;
    [[nodiscard]] Long ReadNumber(std::string_view sName, Long lDefault) override;
    [[nodiscard]] std::string ReadString(std::string_view sName,
                                         std::string_view sDefault) override;
    void WriteNumber(std::string_view sName, Long lValue) override;
    void WriteString(std::string_view sName, std::string_view sValue) override;

private:
    using Key = std::pair<std::string, std::string>; // path and name, lower case
    [[nodiscard]] Key KeyOf(std::string_view sName) const;

    std::string m_path;
    std::map<Key, std::variant<Long, std::string>> m_values;
};

} // namespace qx
