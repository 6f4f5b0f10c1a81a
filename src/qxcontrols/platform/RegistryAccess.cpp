#include "qxcontrols/platform/RegistryAccess.h"

namespace qx {

namespace {

std::string LowerCase(std::string_view sText) {
    std::string lower(sText);
    for (char& c : lower)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return lower;
}

} // namespace

bool RegistryAccess::ReadBoolean(std::string_view sName, bool fDefault) {
    return ReadNumber(sName, fDefault ? -1 : 0) != 0;
}

void RegistryAccess::WriteBoolean(std::string_view sName, bool fValue) {
    WriteNumber(sName, fValue ? -1 : 0);
}

void MemoryRegistry::SetPath(std::string_view sPath) {
    if (!sPath.empty() && sPath.back() == '\\')
        sPath.remove_suffix(1);
    m_path = LowerCase(sPath);
}

MemoryRegistry::Key MemoryRegistry::KeyOf(std::string_view sName) const {
    return {m_path, LowerCase(sName)};
}

Long MemoryRegistry::ReadNumber(std::string_view sName, Long lDefault) {
    const auto found = m_values.find(KeyOf(sName));
    const auto* number = found == m_values.end() ? nullptr : std::get_if<Long>(&found->second);
    return number != nullptr ? *number : lDefault;
}

std::string MemoryRegistry::ReadString(std::string_view sName, std::string_view sDefault) {
    const auto found = m_values.find(KeyOf(sName));
    const auto* text = found == m_values.end() ? nullptr : std::get_if<std::string>(&found->second);
    return text != nullptr ? *text : std::string(sDefault);
}

void MemoryRegistry::WriteNumber(std::string_view sName, Long lValue) {
    m_values[KeyOf(sName)] = lValue;
}

void MemoryRegistry::WriteString(std::string_view sName, std::string_view sValue) {
    m_values[KeyOf(sName)] = std::string(sValue);
}

} // namespace qx
