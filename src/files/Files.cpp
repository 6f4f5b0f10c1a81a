#include "files/Files.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <system_error>
#include <utility>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>
#endif

namespace qx::files {

namespace {

namespace fs = std::filesystem;

constexpr const char* kNew = ".new-"; // stands in the names of files that are being written

[[noreturn]] void Fail(const fs::path& path, const std::string& what,
                       const std::error_code& reason) {
    throw std::runtime_error(path.string() + " " + what + ": " + reason.message());
}

std::error_code LastReason() {
    return {errno, std::generic_category()};
}

// The seam to the system: files by number, opened for binary bytes and closed in programs that this
// one starts.
#ifdef _WIN32

std::FILE* OpenForReading(const fs::path& path) {
    return _wfopen(path.c_str(), L"rbN");
}
int OpenForFlushing(const fs::path& path) {
    return _wopen(path.c_str(), _O_RDWR | _O_BINARY | _O_NOINHERIT);
}
int CreateNew(const fs::path& path) {
    return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                  _S_IREAD | _S_IWRITE);
}
int WriteSome(int file, const char* bytes, std::size_t size) {
    constexpr std::size_t kMost = 1 << 20;
    return _write(file, bytes, static_cast<unsigned>(size < kMost ? size : kMost));
}
bool Flush(int file) {
    return _commit(file) == 0;
}
bool Close(int file) {
    return _close(file) == 0;
}
void Rename(const fs::path& from, const fs::path& to, std::error_code& reason) {
    reason.clear();
    if (!MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        reason = {static_cast<int>(GetLastError()), std::system_category()};
}
bool FlushFolder(const fs::path& /*folder*/) { // a renaming that is written through does it
    return true;
}
// Gives the file another name, unless that is in use.
bool RenameToNew(const fs::path& from, const fs::path& to, std::error_code& reason) {
    reason.clear();
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH))
        return true;
    const DWORD number = GetLastError();
    if (number != ERROR_ALREADY_EXISTS && number != ERROR_FILE_EXISTS)
        reason = {static_cast<int>(number), std::system_category()};
    return false;
}
fs::path FolderFrom(const wchar_t* variable) {
    const wchar_t* folder = _wgetenv(variable);
    if (folder == nullptr || *folder == L'\0')
        throw std::runtime_error(fs::path(variable).string() + " names no folder of the user");
    return folder;
}

#else

std::FILE* OpenForReading(const fs::path& path) {
    return std::fopen(path.c_str(), "rbe");
}
int OpenForFlushing(const fs::path& path) {
    return open(path.c_str(), O_RDONLY | O_CLOEXEC);
}
int CreateNew(const fs::path& path) {
    return open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}
ssize_t WriteSome(int file, const char* bytes, std::size_t size) {
    return write(file, bytes, size);
}
bool Flush(int file) {
    return fsync(file) == 0;
}
bool Close(int file) {
    return close(file) == 0;
}
void Rename(const fs::path& from, const fs::path& to, std::error_code& reason) {
    fs::rename(from, to, reason);
}
// Whether the folder's names are on the disk, as far as the system can be asked: some folders may
// not be read, and some file systems flush no folders.
bool FlushFolder(const fs::path& folder) {
    const int file =
        open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return errno == EACCES;
    const bool isFlushed = fsync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
    const int reason = errno;
    close(file);
    errno = reason;
    return isFlushed;
}
// Gives the file another name, unless that is in use.
bool RenameToNew(const fs::path& from, const fs::path& to, std::error_code& reason) {
    reason.clear();
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return true;
    }
    if (errno == EPERM || errno == ENOTSUP || errno == ENOSYS) { // no file has two names here
        if (fs::exists(to, reason) || reason)
            return false;
        fs::rename(from, to, reason);
        return !reason;
    }
    if (errno != EEXIST)
        reason = LastReason();
    return false;
}
// The folder that the variable names, else the one of that name in the user's home.
fs::path FolderFrom(const char* variable, const char* inHome) {
    const char* folder = std::getenv(variable);
    if (folder != nullptr && fs::path(folder).is_absolute())
        return folder;
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        throw std::runtime_error(std::string("neither ") + variable +
                                 " nor HOME names a folder of the user");
    return fs::path(home) / inHome;
}

#endif

bool WriteAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const auto written = WriteSome(file, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return false;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return Flush(file);
}

// A new file beside the one that it is to replace, gone with this object unless it has done so.
class Replacement {
public:
    explicit Replacement(const fs::path& path) : m_path(path) {
        std::error_code ignored;
        m_status = fs::status(path, ignored);
        if (fs::exists(m_status) && !fs::is_regular_file(m_status))
            throw std::runtime_error(path.string() + " cannot be written: it is no ordinary file");
        m_target = fs::weakly_canonical(path, ignored); // the file itself, where this is a link
        if (ignored)
            m_target = path;
        for (int number = 0; m_file < 0; ++number) {
            m_temporary = m_target;
            m_temporary += kNew + std::to_string(ProcessId()) + "-" + std::to_string(number);
            m_file = CreateNew(m_temporary);
            if (m_file < 0 && errno != EEXIST)
                Fail(path, "cannot be written", LastReason());
        }
    }
    ~Replacement() {
        if (m_file >= 0)
            (void)Close(m_file);
        std::error_code ignored;
        if (!m_temporary.empty())
            fs::remove(m_temporary, ignored);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    // The new file, open and empty, and its name; who uses the name closes it first.
    [[nodiscard]] int File() const { return m_file; }
    [[nodiscard]] const fs::path& Name() const { return m_temporary; }
    void CloseFile() { Require(Close(std::exchange(m_file, -1))); }
    void OpenAgain() {
        m_file = OpenForFlushing(m_temporary);
        Require(m_file >= 0);
    }
    void Require(bool success) const {
        if (!success)
            Fail(m_path, "cannot be written", LastReason());
    }

    // Puts the new file, which is closed, in the place of the old one.
    void Commit() {
        std::error_code reason;
        if (fs::exists(m_status))
            fs::permissions(m_temporary, m_status.permissions(), reason);
        if (!reason)
            Rename(m_temporary, m_target, reason);
        if (reason)
            Fail(m_path, "cannot be written", reason);
        m_temporary.clear();
        (void)FlushFolder(m_target.parent_path()); // the file is complete
    }
    // The same, unless there is a file of that name; it is for good when this returns true.
    [[nodiscard]] bool CommitNew() {
        std::error_code reason;
        const bool isNew = RenameToNew(m_temporary, m_target, reason);
        if (reason)
            Fail(m_path, "cannot be written", reason);
        if (!isNew)
            return false;
        m_temporary.clear();
        Require(FlushFolder(m_target.parent_path()));
        return true;
    }

private:
    fs::path m_path;
    fs::file_status m_status;
    fs::path m_target;
    fs::path m_temporary;
    int m_file = -1;
};

} // namespace

std::string ReadFile(const fs::path& path) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(OpenForReading(path), &std::fclose);
    if (!file)
        Fail(path, "cannot be read", LastReason());
    std::string bytes;
    char buffer[65536];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get()))
        bytes.append(buffer, count);
    if (std::ferror(file.get()) != 0)
        Fail(path, "cannot be read", LastReason());
    return bytes;
}

void WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    Replacement replacement(path);
    replacement.Require(WriteAll(replacement.File(), bytes));
    replacement.CloseFile();
    replacement.Commit();
}

void WriteFileAtomically(const fs::path& path, const std::function<void(const fs::path&)>& write) {
    Replacement replacement(path);
    replacement.CloseFile();
    write(replacement.Name());
    replacement.OpenAgain();
    replacement.Require(Flush(replacement.File()));
    replacement.CloseFile();
    replacement.Commit();
}

bool WriteNewFile(const fs::path& path, std::string_view bytes) {
    Replacement replacement(path);
    replacement.Require(WriteAll(replacement.File(), bytes));
    replacement.CloseFile();
    return replacement.CommitNew();
}

void RemoveLeftovers(const fs::path& folder) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const bool isLeftover = entry.path().filename().string().find(kNew) != std::string::npos &&
                                fs::file_time_type::clock::now() - entry.last_write_time(ignored) >
                                    std::chrono::hours(24);
        if (isLeftover && entry.is_regular_file(ignored))
            fs::remove(entry.path(), ignored);
    }
}

void MakeFolder(const fs::path& path) {
    std::error_code reason;
    if (path.empty() || fs::is_directory(path, reason))
        return;
    MakeFolder(path.parent_path());
    fs::create_directory(path, reason);
    if (reason)
        Fail(path, "cannot be made", reason);
    if (!FlushFolder(path.parent_path()))
        Fail(path, "cannot be made", LastReason());
}

void RemoveFile(const fs::path& path) {
    std::error_code reason;
    fs::remove(path, reason);
    if (reason)
        Fail(path, "cannot be removed", reason);
    if (!FlushFolder(path.parent_path()))
        Fail(path, "cannot be removed", LastReason());
}

FileLock::FileLock(const fs::path& path) {
    fs::path name = path;
    name += ".lock";
#ifdef _WIN32
    const HANDLE handle =
        CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        Fail(name, "cannot be made", {static_cast<int>(GetLastError()), std::system_category()});
    m_handle = reinterpret_cast<std::intptr_t>(handle);
#else
    m_handle = open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (m_handle < 0)
        Fail(name, "cannot be made", LastReason());
#endif
}

FileLock::~FileLock() {
#ifdef _WIN32
    CloseHandle(reinterpret_cast<HANDLE>(m_handle));
#else
    close(static_cast<int>(m_handle));
#endif
}

bool FileLock::TryLock() {
    if (m_isHeld)
        return true;
#ifdef _WIN32
    OVERLAPPED place{};
    m_isHeld =
        LockFileEx(reinterpret_cast<HANDLE>(m_handle),
                   LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0, &place) != 0;
#else
    m_isHeld = flock(static_cast<int>(m_handle), LOCK_EX | LOCK_NB) == 0;
#endif
    return m_isHeld;
}

bool ErrorIsTerminal() {
#ifdef _WIN32
    return _isatty(2) != 0;
#else
    return isatty(2) != 0;
#endif
}

#ifdef _WIN32
long ProcessId() {
    return static_cast<long>(GetCurrentProcessId());
}
fs::path ExecutableFolder() {
    std::wstring name(MAX_PATH, L'\0');
    for (;;) {
        const DWORD size =
            GetModuleFileNameW(nullptr, name.data(), static_cast<DWORD>(name.size()));
        if (size < name.size())
            return fs::path(name.substr(0, size)).parent_path();
        name.resize(2 * name.size());
    }
}
fs::path UserDataFolder() {
    return FolderFrom(L"LOCALAPPDATA") / "qxcontrols";
}
#else
long ProcessId() {
    return getpid();
}
fs::path ExecutableFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}
fs::path UserDataFolder() {
    return FolderFrom("XDG_DATA_HOME", ".local/share") / "qxcontrols";
}
#endif

} // namespace qx::files
