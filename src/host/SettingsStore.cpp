#include "host/SettingsStore.h"

#include "files/Files.h"
#include "host/Error.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <chrono>
#include <limits>
#include <map>
#include <optional>
#include <thread>
#include <variant>

namespace qx::host {

namespace {

// How long a program waits for another one that is writing: five seconds.
constexpr int kLockTries = 500;
constexpr auto kLockPause = std::chrono::milliseconds(10);

QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString PathText(const std::filesystem::path& path) {
    return QString::fromStdWString(path.wstring());
}

// The number that a hand-written value means: decimal or hexadecimal, signed or not, or a truth
// value in words.
std::optional<Long> NumberIn(const QVariant& value) {
    const QString text = value.toString().trimmed().toLower();
    if (text == "true" || text == "yes" || text == "on")
        return -1;
    if (text == "false" || text == "no" || text == "off")
        return 0;
    bool ok = false;
    const qlonglong number = text.toLongLong(&ok, text.startsWith("0x") ? 16 : 10);
    if (!ok || number < std::numeric_limits<Long>::min() ||
        number > std::numeric_limits<std::uint32_t>::max())
        return std::nullopt;
    return static_cast<Long>(static_cast<std::uint32_t>(number));
}

// The text of the file, empty when there is none. What is no ordinary file, or cannot be read, is
// somebody else's and stays as it is.
std::string TextOf(const std::filesystem::path& file) {
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    if (!std::filesystem::exists(status))
        return {};
    if (!std::filesystem::is_regular_file(status))
        throw Error(ErrorKind::FileFailed,
                    "preferences cannot be kept in " + file.string() + ": it is no ordinary file");
    try {
        return files::ReadFile(file);
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
}

// Whether these may be the bytes of an INI file: Qt takes nearly any line for a setting, but writes
// no control characters.
bool IsIniText(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) >= ' ' || c == '\t' || c == '\n' || c == '\r';
    });
}

} // namespace

struct SettingsStore::Store {
    explicit Store(const std::filesystem::path& file)
        : settings(PathText(file), QSettings::IniFormat) {
        settings.setFallbacksEnabled(false);
    }
    Store()
#ifdef _WIN32
        : settings("HKEY_CURRENT_USER", QSettings::NativeFormat)
#else
        : settings(QSettings::IniFormat, QSettings::UserScope, "qxcontrols", "preferences")
#endif
    {
        settings.setFallbacksEnabled(false);
    }

    // Reads a value, or the default, and remembers it as what this program knows.
    template <typename Value, typename Convert>
    Value Read(const QString& key, const Value& fallback, Convert convert) {
        const QVariant stored = settings.value(key);
        const std::optional<Value> value = stored.isValid() ? convert(stored) : std::nullopt;
        known[key] = value.value_or(fallback);
        return value.value_or(fallback);
    }

    QSettings settings;
    std::map<QString, std::variant<Long, std::string>> known;
    std::unique_ptr<files::FileLock> writing; // while values are written and not yet flushed
};

SettingsStore::SettingsStore(const std::filesystem::path& file) {
    bool isDamaged = !file.empty() && !IsIniText(TextOf(file));
    Open(file);
    if (file.empty() && m_store->settings.format() == QSettings::IniFormat)
        isDamaged = !IsIniText(TextOf(Location()));
    (void)m_store->settings.allKeys(); // reads all of the file, which is else read piece by piece
    if (m_store->settings.status() == QSettings::AccessError)
        throw Error(ErrorKind::FileFailed, "the preferences in " + Location() + " cannot be read");
    if (!isDamaged && m_store->settings.status() == QSettings::NoError)
        return;
    SetAside(Location());
    Open(file);
}

SettingsStore::~SettingsStore() = default;

void SettingsStore::Open(const std::filesystem::path& file) {
    m_store = file.empty() ? std::make_unique<Store>() : std::make_unique<Store>(file);
    m_store->settings.sync();
}

void SettingsStore::SetAside(const std::filesystem::path& damaged) {
    m_store.reset(); // lets go of the file
    for (int number = 1; m_damagedFile.empty() || std::filesystem::exists(m_damagedFile); ++number)
        m_damagedFile = damaged.string() + ".damaged" + (number == 1 ? "" : std::to_string(number));
    std::error_code error;
    std::filesystem::rename(damaged, m_damagedFile, error);
    if (error)
        throw Error(ErrorKind::FileFailed,
                    "the preferences in " + damaged.string() +
                        " are damaged and cannot be set aside: " + error.message());
}

std::string SettingsStore::Location() const {
    return m_store->settings.fileName().toStdString();
}

void SettingsStore::BeginWriting() {
    if (m_store->writing)
        return;
    std::error_code ignored; // the lock file tells when there is no folder to write in
    std::filesystem::create_directories(std::filesystem::path(Location()).parent_path(), ignored);
    // Qt locks the file itself while it reads or writes it, under the name of the file and ".lock".
    try {
        m_store->writing = std::make_unique<files::FileLock>(Location() + ".writing");
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed,
                    std::string("the preferences could not be stored: ") + error.what());
    }
    for (int i = 0; i < kLockTries && !m_store->writing->TryLock(); ++i)
        std::this_thread::sleep_for(kLockPause);
    m_store->settings.sync(); // what others have written meanwhile
}

void SettingsStore::Flush() {
    m_store->settings.sync();
    m_store->writing.reset();
    if (m_store->settings.status() != QSettings::NoError)
        throw Error(ErrorKind::FileFailed, "the preferences could not be stored in " + Location());
}

void SettingsStore::SetPath(std::string_view sPath) {
    m_path = std::string(sPath);
    std::replace(m_path.begin(), m_path.end(), '\\', '/');
    if (!m_path.empty() && m_path.back() != '/')
        m_path += '/';
}

Long SettingsStore::ReadNumber(std::string_view sName, Long lDefault) {
    return m_store->Read<Long>(Text(m_path + std::string(sName)), lDefault, NumberIn);
}

std::string SettingsStore::ReadString(std::string_view sName, std::string_view sDefault) {
    return m_store->Read<std::string>(
        Text(m_path + std::string(sName)), std::string(sDefault), [](const QVariant& value) {
            // A hand-written text with commas reads as a list.
            return std::optional(value.toStringList().join(", ").toStdString());
        });
}

template <typename Value, typename Stored>
void SettingsStore::Write(std::string_view sName, const Value& value, const Stored& stored) {
    BeginWriting();
    const QString key = Text(m_path + std::string(sName));
    const auto known = m_store->known.find(key);
    const bool isAsRead =
        known != m_store->known.end() && known->second == std::variant<Long, std::string>(value);
    if (isAsRead && m_store->settings.contains(key))
        return; // another program may have given it a new value
    m_store->settings.setValue(key, stored);
    m_store->known[key] = value;
}

void SettingsStore::WriteNumber(std::string_view sName, Long lValue) {
    Write(sName, lValue, lValue);
}

void SettingsStore::WriteString(std::string_view sName, std::string_view sValue) {
    Write(sName, std::string(sValue), Text(sValue));
}

} // namespace qx::host
