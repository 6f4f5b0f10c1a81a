#include "host/SettingsStore.h"

#include "files/Files.h"
#include "host/Error.h"
#include "qxcontrols/common/Utf.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <thread>
#include <variant>

namespace qx::host {

namespace {

// How long a program waits for another one that is storing its values, which takes that one a few
// milliseconds: at most one second.
constexpr int kLockTries = 100;
constexpr auto kLockPause = std::chrono::milliseconds(10);

using Value = std::variant<Long, std::string>;

QString Text(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

#ifdef _WIN32

QString PathText(const std::filesystem::path& path) {
    return QString::fromStdWString(path.wstring());
}

void RequireFolder() {}

#else

// Qt takes names of files as UTF-8, whatever the locale.
QString PathText(const std::filesystem::path& path) {
    if (!IsWellFormedUtf8(path.native()))
        throw Error(ErrorKind::FileFailed,
                    "preferences cannot be kept in " + path.string() + ": its name is not UTF-8");
    return QString::fromStdString(path.native());
}

void RequireFolder() {
    const auto isSet = [](const char* name) {
        const char* const value = std::getenv(name);
        return value != nullptr && *value != '\0';
    };
    if (!isSet("HOME") && !isSet("XDG_CONFIG_HOME"))
        throw Error(ErrorKind::FileFailed, "there is no folder for the preferences: neither HOME "
                                           "nor XDG_CONFIG_HOME is set");
}

#endif

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

// The text of the file, empty when there is none. A file that is not ordinary, or cannot be read,
// belongs to somebody else and stays as it is.
std::string TextOf(const std::filesystem::path& file) {
    std::error_code ignored;
    const auto status = std::filesystem::status(file, ignored);
    if (!std::filesystem::exists(status))
        return {};
    if (!std::filesystem::is_regular_file(status))
        throw Error(ErrorKind::FileFailed, "preferences cannot be kept in " + file.string() +
                                               ": it is not an ordinary file");
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

// The order of names that differ in more than the case of ASCII letters.
struct CaseBlind {
    static char16_t Folded(QChar c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c.unicode() - u'A' + u'a')
                                      : c.unicode();
    }
    bool operator()(const QString& a, const QString& b) const {
        return std::lexicographical_compare(
            a.begin(), a.end(), b.begin(), b.end(),
            [](QChar left, QChar right) { return Folded(left) < Folded(right); });
    }
};

using Values = std::map<QString, Value, CaseBlind>;

QVariant StoredFormOf(const Value& value) {
    if (const auto* number = std::get_if<Long>(&value))
        return *number;
    return Text(std::get<std::string>(value));
}

} // namespace

struct SettingsStore::Store {
    explicit Store(std::filesystem::path path) : file(std::move(path)) { Open(); }

    // Qt's object never forgets a failure; a new one begins without.
    void Open() {
        if (!file.empty())
            settings = std::make_unique<QSettings>(PathText(file), QSettings::IniFormat);
        else
#ifdef _WIN32
            settings = std::make_unique<QSettings>("HKEY_CURRENT_USER", QSettings::NativeFormat);
#else
            settings = std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope,
                                                   "qxcontrols", "preferences");
#endif
        settings->setFallbacksEnabled(false);
    }

    // The name under which the store has the value, if it has it. The native registry finds names
    // whatever their case; in an INI file the case counts.
    [[nodiscard]] QString NameOf(const QString& key) const {
        if (settings->format() != QSettings::IniFormat || settings->contains(key))
            return key;
        const QStringList names = settings->allKeys();
        const CaseBlind less;
        const auto found = std::find_if(names.begin(), names.end(), [&](const QString& name) {
            return !less(name, key) && !less(key, name);
        });
        return found == names.end() ? key : *found;
    }

    // Reads a value, or the default, and remembers the value as the one that this program knows.
    template <typename Kind, typename Convert>
    Kind Read(const QString& key, const Kind& fallback, Convert convert) {
        const auto written = waiting.find(key);
        const QVariant stored =
            written == waiting.end() ? settings->value(NameOf(key)) : StoredFormOf(written->second);
        const std::optional<Kind> value = stored.isValid() ? convert(stored) : std::nullopt;
        if (!value)
            known.erase(key); // what cannot be read is written, even as the default
        else if (written == waiting.end())
            known.insert_or_assign(key, *value);
        return value.value_or(fallback);
    }

    void Write(const QString& key, Value value) {
        const auto read = known.find(key);
        const bool isAsRead = read != known.end() && read->second == value;
        if (isAsRead && settings->contains(NameOf(key)))
            waiting.erase(key); // another program may have given it a new value
        else
            waiting[key] = std::move(value);
    }

    std::filesystem::path file; // empty: the user's own
    std::unique_ptr<QSettings> settings;
    Values known;   // as this program last read or stored them
    Values waiting; // to be stored
};

SettingsStore::SettingsStore(const std::filesystem::path& file) {
    if (file.empty())
        RequireFolder();
    bool isDamaged = !file.empty() && !IsIniText(TextOf(file));
    Open(file);
    if (file.empty() && m_store->settings->format() == QSettings::IniFormat)
        isDamaged = !IsIniText(TextOf(Location()));
    (void)m_store->settings->allKeys(); // reads all of the file, which is else read piece by piece
    if (m_store->settings->status() == QSettings::AccessError)
        throw Error(ErrorKind::FileFailed, "the preferences in " + Location() + " cannot be read");
    if (!isDamaged && m_store->settings->status() == QSettings::NoError)
        return;
    SetAside(Location());
    Open(file);
}

SettingsStore::~SettingsStore() = default;

void SettingsStore::Open(const std::filesystem::path& file) {
    m_store = std::make_unique<Store>(file);
    m_store->settings->sync();
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
    return m_store->settings->fileName().toStdString();
}

// Qt locks the file itself while it reads or writes it, under the name of the file and ".lock".
std::unique_ptr<files::FileLock> SettingsStore::Lock() const {
    std::error_code ignored; // the lock file cannot be made either
    std::filesystem::create_directories(std::filesystem::path(Location()).parent_path(), ignored);
    auto lock = std::make_unique<files::FileLock>(Location() + ".writing");
    for (int i = 0; i < kLockTries && !lock->TryLock(); ++i)
        std::this_thread::sleep_for(kLockPause);
    return lock;
}

void SettingsStore::Flush() {
    if (m_store->waiting.empty())
        return;
    try {
        const auto lock = Lock();
        QSettings& settings = *m_store->settings;
        settings.sync(); // reads what others have stored meanwhile
        for (const auto& [key, value] : m_store->waiting)
            settings.setValue(m_store->NameOf(key), StoredFormOf(value));
        settings.sync();
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed,
                    std::string("the preferences could not be stored: ") + error.what());
    }
    if (m_store->settings->status() != QSettings::NoError) {
        m_store->Open();
        throw Error(ErrorKind::FileFailed, "the preferences could not be stored in " + Location());
    }
    for (auto& [key, value] : m_store->waiting)
        m_store->known[key] = std::move(value);
    m_store->waiting.clear();
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
            const bool isList = value.typeId() == QMetaType::QStringList;
            const QString text = isList ? value.toStringList().join(", ") : value.toString();
            return std::optional(text.toStdString());
        });
}

void SettingsStore::WriteNumber(std::string_view sName, Long lValue) {
    m_store->Write(Text(m_path + std::string(sName)), lValue);
}

void SettingsStore::WriteString(std::string_view sName, std::string_view sValue) {
    m_store->Write(Text(m_path + std::string(sName)), std::string(sValue));
}

} // namespace qx::host
