// The implementation for POSIX systems.

#include "files/Files.h"
#include "files/System.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace qx::files {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kPrivateFile = 0600;
constexpr mode_t kSharedFile = 0666; // reduced by the user's umask
constexpr mode_t kPrivateFolder = 0700;
constexpr int kPatience = 10000; // ms to wait for data from a pipe

std::error_code Last() {
    return {errno, std::generic_category()};
}

void Note(bool isDone, std::error_code& reason) {
    reason = isDone ? std::error_code() : Last();
}

// Files must not take the number of a closed standard stream: printed text would go into them.
int AwayFromStandardStreams(int file) {
    if (file < 0 || file > STDERR_FILENO)
        return file;
    const int other = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    const int reason = errno;
    close(file);
    errno = reason;
    return other;
}

int Open(const fs::path& path, int flags, mode_t mode = 0) {
    return AwayFromStandardStreams(open(path.c_str(), flags | O_CLOEXEC, mode));
}

// The folder in the variable, or otherwise this folder in the user's home.
fs::path FolderFrom(const char* variable, const char* inHome) {
    const char* folder = std::getenv(variable);
    if (folder != nullptr && fs::path(folder).is_absolute())
        return folder;
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        throw ProblemError({.obstacle = Obstacle::NoFolderOfUser, .names = {"HOME", variable}});
    return fs::path(home) / inHome;
}

class OpenFile {
public:
    explicit OpenFile(int file) : m_file(file) {}
    ~OpenFile() {
        if (m_file >= 0)
            close(m_file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    [[nodiscard]] int Number() const { return m_file; }

private:
    int m_file;
};

} // namespace

int System::Create(const Path& path, Access access, Reason& reason) {
    const mode_t mode = access == Access::Private ? kPrivateFile : kSharedFile;
    const int file = Open(path, O_WRONLY | O_CREAT | O_EXCL, mode);
    Note(file >= 0, reason);
    if (file < 0 || access == Access::Shared || fchmod(file, mode) == 0)
        return file;
    reason = Last();
    close(file);
    unlink(path.c_str());
    return -1;
}

int System::OpenForFlushing(const Path& path, Reason& reason) {
    const int file = Open(path, O_RDONLY);
    Note(file >= 0, reason);
    return file;
}

std::size_t System::Write(int file, const char* bytes, std::size_t size, Reason& reason) {
    ssize_t written = -1;
    do
        written = write(file, bytes, size);
    while (written < 0 && errno == EINTR);
    Note(written > 0, reason);
    return written < 0 ? 0 : static_cast<std::size_t>(written);
}

void System::Flush(int file, Reason& reason) {
    Note(fsync(file) == 0, reason);
}

void System::Close(int file, Reason& reason) {
    Note(close(file) == 0 || errno == EINTR, reason);
}

void System::Rename(const Path& from, const Path& to, Reason& reason) {
    Note(rename(from.c_str(), to.c_str()) == 0, reason);
}

bool System::RenameToNew(const Path& from, const Path& to, Reason& reason) {
    reason.clear();
    if (link(from.c_str(), to.c_str()) == 0) {
        unlink(from.c_str());
        return true;
    }
    if (errno == EPERM || errno == ENOTSUP || errno == ENOSYS) { // no hard links here
        if (fs::exists(to, reason) || reason)
            return false;
        Rename(from, to, reason);
        return !reason;
    }
    if (errno != EEXIST)
        reason = Last();
    return false;
}

void System::Remove(const Path& path, Reason& reason) {
    fs::remove(path, reason);
}

void System::MakeFolder(const Path& path, Reason& reason) {
    const bool isMade = mkdir(path.c_str(), kPrivateFolder) == 0;
    Note((isMade && chmod(path.c_str(), kPrivateFolder) == 0) || (!isMade && errno == EEXIST),
         reason);
}

// Some folders cannot be read, and some file systems cannot flush folders.
void System::FlushFolder(const Path& path, Reason& reason) {
    const OpenFile folder(Open(path.empty() ? "." : path, O_RDONLY | O_DIRECTORY));
    if (folder.Number() < 0)
        return Note(errno == EACCES, reason);
    Note(fsync(folder.Number()) == 0 || errno == EINVAL || errno == ENOTSUP, reason);
}

fs::path TargetOf(const fs::path& asked) {
    constexpr int kMostLinks = 40;
    const auto fail = [&](Obstacle obstacle, const fs::path& folder = {},
                          const std::error_code& why = {}) {
        Problem problem = {.deed = Deed::Write, .subject = asked.string(), .obstacle = obstacle};
        if (!folder.empty())
            problem.names = {folder.string()};
        if (why)
            problem.system = why.message();
        throw ProblemError(std::move(problem));
    };
    fs::path path = asked;
    std::error_code reason;
    for (int links = 0;; ++links) {
        const fs::path folder = path.has_parent_path() ? path.parent_path() : fs::path(".");
        const fs::path whole = fs::canonical(folder, reason);
        if (reason == std::errc::no_such_file_or_directory)
            fail(Obstacle::NoFolder, folder);
        if (reason)
            fail(Obstacle::FolderUnusable, folder, reason);
        path = whole / path.filename();
        if (!fs::is_symlink(fs::symlink_status(path, reason)))
            return path;
        const fs::path next = fs::read_symlink(path, reason);
        if (reason || links == kMostLinks)
            fail(Obstacle::DeadLink);
        path = next.is_absolute() ? next : whole / next;
    }
}

std::string ReadFile(const fs::path& path, std::uintmax_t most) {
    const auto fail = [&](Obstacle obstacle, std::uintmax_t number = 0) {
        throw ProblemError({.deed = Deed::Read,
                            .subject = path.string(),
                            .obstacle = obstacle,
                            .number = static_cast<std::int64_t>(number)});
    };
    const auto failAsReported = [&] {
        const std::string reason = Last().message();
        throw ProblemError({.deed = Deed::Read, .subject = path.string(), .system = reason});
    };
    // Opening a pipe without a writer would block forever.
    const OpenFile file(Open(path, O_RDONLY | O_NONBLOCK));
    struct stat status {};
    if (file.Number() < 0 || fstat(file.Number(), &status) != 0)
        failAsReported();
    if (S_ISDIR(status.st_mode))
        fail(Obstacle::IsFolder);
    if (!S_ISREG(status.st_mode) && !S_ISFIFO(status.st_mode))
        fail(Obstacle::IsDevice);
    std::string bytes;
    bytes.reserve(std::min(static_cast<std::uintmax_t>(status.st_size), most));
    char buffer[16384];
    for (bool isExpecting = S_ISFIFO(status.st_mode);;) { // a pipe may not have a writer yet
        const ssize_t count = read(file.Number(), buffer, sizeof buffer);
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            failAsReported();
        if (count == 0 && !isExpecting)
            return bytes;
        if (count > 0)
            bytes.append(buffer, static_cast<std::size_t>(count));
        if (bytes.size() > most)
            fail(Obstacle::TooLarge, most);
        pollfd waiting = {file.Number(), POLLIN, 0};
        if (count <= 0 && poll(&waiting, 1, kPatience) == 0)
            fail(Obstacle::NoData);
        isExpecting = false;
    }
}

bool IsWriteProtected(const fs::path& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return false;
    const bool isReadOnly = (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
    return isReadOnly ||
           faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0; // not for the superuser
}

void PrepareStandardStreams() {
    // A closed stream is replaced by one that cannot be used in its direction.
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0)
            (void)open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

FileLock::FileLock(const fs::path& path) {
    const fs::path name = LockName(path);
    m_handle = Open(name, O_RDWR | O_CREAT, kPrivateFile);
    const std::error_code reason = Last();
    if (m_handle < 0)
        throw ProblemError(
            {.deed = Deed::Create, .subject = name.string(), .system = reason.message()});
}

FileLock::~FileLock() {
    close(static_cast<int>(m_handle));
}

bool FileLock::TryLock() {
    m_isHeld = m_isHeld || flock(static_cast<int>(m_handle), LOCK_EX | LOCK_NB) == 0;
    return m_isHeld;
}

int ErrorColumns() {
    winsize size{};
    if (isatty(STDERR_FILENO) == 0)
        return 0;
    const bool isKnown = ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : kUsualColumns;
}

bool ErrorShowsColors() {
    const char* const terminal = std::getenv("TERM");
    return terminal == nullptr || std::string_view(terminal) != "dumb";
}

long ProcessId() {
    return getpid();
}

std::string SystemName() {
    utsname system{};
    (void)uname(&system);
    return std::string(system.sysname) + " " + system.release + " " + system.machine;
}

fs::path ExecutableFolder() {
    return fs::read_symlink("/proc/self/exe").parent_path();
}

fs::path UserDataFolder() {
    return FolderFrom("XDG_DATA_HOME", ".local/share") / "qxcontrols";
}

fs::path UserPreferencesFile() {
    return FolderFrom("XDG_CONFIG_HOME", ".config") / "qxcontrols" / "preferences.ini";
}

} // namespace qx::files
