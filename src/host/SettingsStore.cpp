#include "host/SettingsStore.h"

#include "files/Files.h"
#include "host/Error.h"
#include "qxcontrols/common/Utf.h"

#include <QLockFile>
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
#include <utility>
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

// Whether these are the bytes of an INI file: Qt writes no control characters into it, and tells of
// a line that it cannot read only at the first reading of a file.
bool IsIniText(std::string_view text) {
    const bool hasControls = std::any_of(text.begin(), text.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\n' && c != '\r';
    });
    if (hasControls)
        return false;
    const QStringList lines = Text(text).split(u'\n');
    bool isContinued = false;
    return std::all_of(lines.begin(), lines.end(), [&](const QString& line) {
        const QString content = line.trimmed();
        const bool isWhole = content.isEmpty() || content.startsWith(u';') ||
                             content.contains(content.startsWith(u'[') ? u']' : u'=');
        return std::exchange(isContinued, content.endsWith(u'\\')) || isWhole;
    });
}

// Whether an INI file has a group of this name, in ASCII letters of any case.
bool HasGroup(std::string_view text, const QString& group) {
    const QStringList lines = Text(text).split(u'\n');
    return std::any_of(lines.begin(), lines.end(), [&](const QString& line) {
        return line.trimmed().compare(u'[' + group + u']', Qt::CaseInsensitive) == 0;
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
    explicit Store(std::filesystem::path path) : file(std::move(path)) {}

    // Reads the file as it is now. Qt's object never forgets a failure; a new one begins without.
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
        settings->sync();
        (void)settings->allKeys(); // reads all of the file, which is else read piece by piece
        isDamaged = settings->format() == QSettings::IniFormat &&
                    (settings->status() == QSettings::FormatError ||
                     !IsIniText(TextOf(settings->fileName().toStdString())));
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
        QVariant stored;
        if (written != waiting.end())
            stored = StoredFormOf(written->second);
        else if (!isDamaged)
            stored = settings->value(NameOf(key));
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
    bool isDamaged = false;
    Values known;   // as this program last read or stored them
    Values waiting; // to be stored
};

SettingsStore::SettingsStore(const std::filesystem::path& file) {
    if (file.empty())
        RequireFolder();
    else
        (void)TextOf(file);
    m_store = std::make_unique<Store>(file);
    m_store->Open();
    if (m_store->settings->status() == QSettings::AccessError)
        throw Error(ErrorKind::FileFailed, "the preferences in " + Location() + " cannot be read");
}

SettingsStore::~SettingsStore() = default;

bool SettingsStore::IsDamaged() const {
    return m_store->isDamaged;
}

// Storing values into a file of somebody else's would lose its comments, if not all of it.
void SettingsStore::RefuseForeignFile() const {
    if (m_store->file.empty())
        return;
    const std::string text = TextOf(m_store->file);
    const bool isOurs =
        std::any_of(m_store->waiting.begin(), m_store->waiting.end(), [&](const auto& waiting) {
            return HasGroup(text, waiting.first.section(u'/', 0, 0));
        });
    if (!isOurs && !Text(text).trimmed().isEmpty())
        throw Error(ErrorKind::FileFailed, "preferences cannot be kept in " + Location() +
                                               ": it holds something else, and stays as it is");
}

void SettingsStore::SetAside() {
    const std::string damaged = Location();
    m_store->settings.reset(); // lets go of the file
    m_damagedFile.clear();
    for (int number = 1; m_damagedFile.empty() || std::filesystem::exists(m_damagedFile); ++number)
        m_damagedFile = damaged + ".damaged" + (number == 1 ? "" : std::to_string(number));
    std::error_code error;
    std::filesystem::rename(damaged, m_damagedFile, error);
    m_store->Open();
    if (error) {
        m_damagedFile.clear();
        throw Error(ErrorKind::FileFailed,
                    "the preferences in " + damaged +
                        " are damaged and cannot be set aside: " + error.message());
    }
}

std::string SettingsStore::Location() const {
    return m_store->settings->fileName().toStdString();
}

// Qt locks the file itself while it writes it, under the name of the file and ".lock", and would
// wait for ever where that is a file that no program lets go of.
std::unique_ptr<files::FileLock> SettingsStore::Lock() const {
    std::error_code ignored; // the lock file cannot be made either
    std::filesystem::create_directories(std::filesystem::path(Location()).parent_path(), ignored);
    auto lock = std::make_unique<files::FileLock>(Location() + ".writing");
    for (int i = 0; i < kLockTries && !lock->TryLock(); ++i)
        std::this_thread::sleep_for(kLockPause);
    const std::string name = Location() + ".lock";
    QLockFile ofQt(PathText(name));
    ofQt.setStaleLockTime(0);
    if (m_store->settings->format() == QSettings::IniFormat &&
        !ofQt.tryLock(kLockTries * static_cast<int>(kLockPause.count())) &&
        std::filesystem::exists(name, ignored))
        throw Error(ErrorKind::FileFailed,
                    "the preferences could not be stored: " + name + " is held by another program");
    return lock;
}

void SettingsStore::Flush() {
    if (m_store->waiting.empty())
        return;
    try {
        RefuseForeignFile();
        const auto lock = Lock();
        m_store->Open(); // reads what others have stored meanwhile
        if (m_store->isDamaged)
            SetAside();
        QSettings& settings = *m_store->settings;
        for (const auto& [key, value] : m_store->waiting)
            settings.setValue(m_store->NameOf(key), StoredFormOf(value));
        settings.sync();
    } catch (const Error&) {
        throw;
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
