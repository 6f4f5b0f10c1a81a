#include "host/SettingsStore.h"

#include "files/Files.h"
#include "host/Error.h"
#include "host/IniFile.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace qx::host {

namespace {

std::unique_ptr<SettingsPlace> PlaceOf(const std::filesystem::path& file) {
    if (!file.empty())
        return FileOfSettings(file, false);
#ifdef _WIN32
    return RegistryOfSettings();
#else
    try {
        return FileOfSettings(files::UserPreferencesFile(), true);
    } catch (const Error&) {
        throw;
    } catch (const std::exception& error) {
        throw Error(Cause::NoPreferencesFolder, {.problem = files::ProblemOf(error)});
    }
#endif
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return lower;
}

// Parses a hand-written number: decimal or hexadecimal, signed or unsigned, or a truth value in
// words.
std::optional<Long> NumberInText(std::string_view value) {
    const std::size_t first = std::min(value.find_first_not_of(" \t"), value.size());
    const std::string text = Lower(value.substr(first, value.find_last_not_of(" \t") + 1 - first));
    if (text == "true" || text == "yes" || text == "on")
        return -1;
    if (text == "false" || text == "no" || text == "off")
        return 0;
    const bool isHexadecimal = text.starts_with("0x");
    const char* const end = text.data() + text.size();
    std::int64_t number = 0;
    const auto [read, error] = std::from_chars(text.data() + (isHexadecimal ? 2 : 0), end, number,
                                               isHexadecimal ? 16 : 10);
    if (error != std::errc() || read != end || number < std::numeric_limits<Long>::min() ||
        number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<Long>(static_cast<std::uint32_t>(number));
}

std::optional<Long> NumberIn(const SettingsValue& value) {
    const auto* const number = std::get_if<Long>(&value);
    return number != nullptr ? std::optional(*number) : NumberInText(std::get<std::string>(value));
}

// Accepts any bytes in the file.
std::optional<std::string> TextFrom(const SettingsValue& value) {
    if (const auto* const number = std::get_if<Long>(&value))
        return std::to_string(*number);
    const std::string& text = std::get<std::string>(value);
    return IsWellFormedUtf8(text) ? text : Utf8FromUtf16(Utf16FromUtf8(text));
}

} // namespace

bool SettingsStore::CaseBlind::operator()(const std::string& one, const std::string& other) const {
    return IsLessCaseBlind(one, other);
}

SettingsStore::SettingsStore(const std::filesystem::path& file) : m_place(PlaceOf(file)) {}

SettingsStore::~SettingsStore() = default;

std::string SettingsStore::Location() const {
    return m_place->Location();
}

bool SettingsStore::IsDamaged() const {
    return m_place->IsDamaged();
}

// The value, or the default; also remembers the value as known to this program.
template <typename Kind, typename Convert>
Kind SettingsStore::Read(const std::string& key, const Kind& fallback, Convert convert) {
    const auto written = m_waiting.find(key);
    const bool isWritten = written != m_waiting.end();
    const auto stored = isWritten ? std::optional(written->second) : m_place->Find(key);
    const std::optional<Kind> value = stored ? convert(*stored) : std::nullopt;
    if (!value)
        m_known.erase(key); // an unreadable value is written, even as the default
    else if (!isWritten)
        m_known.insert_or_assign(key, *value);
    return value.value_or(fallback);
}

void SettingsStore::Write(const std::string& key, SettingsValue value) {
    const auto read = m_known.find(key);
    const bool isAsRead = read != m_known.end() && read->second == value;
    if (isAsRead && m_place->Find(key))
        m_waiting.erase(key); // another program may have stored a new value
    else
        m_waiting[key] = std::move(value);
}

void SettingsStore::Flush() {
    if (m_waiting.empty())
        return;
    const auto damaged = m_place->Store({m_waiting.begin(), m_waiting.end()});
    if (!damaged.empty())
        m_damagedFile = damaged;
    for (auto& [key, value] : m_waiting)
        m_known[key] = std::move(value);
    m_waiting.clear();
}

void SettingsStore::SetPath(std::string_view sPath) {
    m_path = std::string(sPath);
    std::replace(m_path.begin(), m_path.end(), '\\', '/');
    if (!m_path.empty() && m_path.back() != '/')
        m_path += '/';
}

Long SettingsStore::ReadNumber(std::string_view sName, Long lDefault) {
    return Read<Long>(m_path + std::string(sName), lDefault,
                      [](const SettingsValue& value) { return NumberIn(value); });
}

std::string SettingsStore::ReadString(std::string_view sName, std::string_view sDefault) {
    return Read<std::string>(m_path + std::string(sName), std::string(sDefault), TextFrom);
}

void SettingsStore::WriteNumber(std::string_view sName, Long lValue) {
    Write(m_path + std::string(sName), lValue);
}

void SettingsStore::WriteString(std::string_view sName, std::string_view sValue) {
    Write(m_path + std::string(sName), std::string(sValue));
}

} // namespace qx::host
