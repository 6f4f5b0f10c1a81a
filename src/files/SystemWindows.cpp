// The implementation for Windows.

#include "files/Files.h"
#include "files/System.h"
#include "files/SystemTexts.h"

#include <chrono>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace qx::files {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

std::error_code Last() {
    return {errno, std::generic_category()};
}

std::error_code LastOfWindows() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

void Note(bool isDone, std::error_code& reason) {
    reason = isDone ? std::error_code() : Last();
}

// Retries an action that another program may block for a moment by reading the file or scanning it
// for viruses.
template <typename Action>
void DoPatiently(std::error_code& reason, const Action& action) {
    const auto until = std::chrono::steady_clock::now() + 2s;
    for (auto pause = 1ms;; pause = std::min(2 * pause, 100ms)) {
        reason = action();
        const bool isInTheWay =
            reason.category() == std::system_category() &&
            (reason.value() == ERROR_SHARING_VIOLATION || reason.value() == ERROR_ACCESS_DENIED ||
             reason.value() == ERROR_USER_MAPPED_FILE);
        if (!isInTheWay || std::chrono::steady_clock::now() >= until)
            return;
        std::this_thread::sleep_for(pause);
    }
}

std::error_code Move(const fs::path& from, const fs::path& to, DWORD flags) {
    const bool isDone = MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH) != 0;
    return isDone ? std::error_code() : LastOfWindows();
}

class OpenFile {
public:
    OpenFile(const fs::path& path, DWORD access, DWORD flags = FILE_ATTRIBUTE_NORMAL)
        : m_file(CreateFileW(path.c_str(), access,
                             FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                             OPEN_EXISTING, flags, nullptr)) {}
    ~OpenFile() {
        if (IsOpen())
            CloseHandle(m_file);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    [[nodiscard]] bool IsOpen() const { return m_file != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const { return m_file; }

private:
    HANDLE m_file;
};

// Whether the name itself is a link, even a dangling one.
bool IsLink(const fs::path& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           found.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

} // namespace

// The user's own folders are already private.
int System::Create(const Path& path, Access /*access*/, Reason& reason) {
    const int file = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                            _S_IREAD | _S_IWRITE);
    Note(file >= 0, reason);
    return file;
}

int System::OpenForFlushing(const Path& path, Reason& reason) {
    const int file = _wopen(path.c_str(), _O_RDWR | _O_BINARY | _O_NOINHERIT);
    Note(file >= 0, reason);
    return file;
}

std::size_t System::Write(int file, const char* bytes, std::size_t size, Reason& reason) {
    constexpr std::size_t kMost = 1 << 20;
    const int written = _write(file, bytes, static_cast<unsigned>(size < kMost ? size : kMost));
    Note(written > 0, reason);
    return written < 0 ? 0 : static_cast<std::size_t>(written);
}

void System::Flush(int file, Reason& reason) {
    Note(_commit(file) == 0, reason);
}

void System::Close(int file, Reason& reason) {
    Note(_close(file) == 0, reason);
}

void System::Rename(const Path& from, const Path& to, Reason& reason) {
    DoPatiently(reason, [&] { return Move(from, to, MOVEFILE_REPLACE_EXISTING); });
}

bool System::RenameToNew(const Path& from, const Path& to, Reason& reason) {
    DoPatiently(reason, [&] { return Move(from, to, 0); });
    const bool isNew = !reason;
    if (reason.value() == ERROR_ALREADY_EXISTS || reason.value() == ERROR_FILE_EXISTS)
        reason.clear();
    return isNew;
}

void System::Remove(const Path& path, Reason& reason) {
    DoPatiently(reason, [&] {
        std::error_code failed;
        fs::remove(path, failed);
        return failed;
    });
}

void System::MakeFolder(const Path& path, Reason& reason) {
    fs::create_directory(path, reason);
}

void System::FlushFolder(const Path& /*path*/, Reason& reason) {
    reason.clear(); // the write-through rename has done this
}

fs::path TargetOf(const fs::path& path) {
    const auto fail = [&](Obstacle obstacle, std::vector<std::string> names = {}) {
        throw ProblemError({.deed = Deed::Write,
                            .subject = TextOf(path),
                            .obstacle = obstacle,
                            .names = std::move(names)});
    };
    std::error_code reason;
    const fs::path whole = fs::absolute(path, reason);
    if (whole.native().starts_with(L"\\\\.\\"))
        fail(Obstacle::IsDevice);
    if (reason || !fs::is_directory(whole.parent_path(), reason))
        fail(Obstacle::NoFolder, {TextOf(whole.parent_path())});
    if (!IsLink(whole))
        return whole;
    const OpenFile file(whole, 0);
    std::wstring name(1U << 15U, L'\0');
    const DWORD size = file.IsOpen() ? GetFinalPathNameByHandleW(file.Get(), name.data(),
                                                                 static_cast<DWORD>(name.size()), 0)
                                     : 0;
    if (size == 0 || size >= name.size())
        fail(Obstacle::DeadLink);
    return name.substr(0, size);
}

std::string ReadFile(const fs::path& path, std::uintmax_t most) {
    const auto fail = [&](Obstacle obstacle, std::uintmax_t number = 0) {
        throw ProblemError({.deed = Deed::Read,
                            .subject = TextOf(path),
                            .obstacle = obstacle,
                            .number = static_cast<std::int64_t>(number)});
    };
    const auto failAsReported = [&] {
        const std::string reason = ReasonOf(LastOfWindows());
        throw ProblemError({.deed = Deed::Read, .subject = TextOf(path), .system = reason});
    };
    std::error_code reason;
    if (fs::is_directory(path, reason))
        fail(Obstacle::IsFolder);
    const OpenFile file(path, GENERIC_READ);
    if (!file.IsOpen())
        failAsReported();
    if (GetFileType(file.Get()) != FILE_TYPE_DISK)
        fail(Obstacle::IsDevice);
    std::string bytes;
    char buffer[65536];
    for (DWORD count = 1; count != 0; bytes.append(buffer, count)) {
        if (!::ReadFile(file.Get(), buffer, sizeof buffer, &count, nullptr))
            failAsReported();
        if (bytes.size() + count > most)
            fail(Obstacle::TooLarge, most);
    }
    return bytes;
}

bool IsWriteProtected(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

FileLock::FileLock(const fs::path& path) {
    const fs::path name = LockName(path);
    const HANDLE handle =
        CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw ProblemError(
            {.deed = Deed::Create, .subject = TextOf(name), .system = ReasonOf(LastOfWindows())});
    m_handle = reinterpret_cast<std::intptr_t>(handle);
}

FileLock::~FileLock() {
    CloseHandle(reinterpret_cast<HANDLE>(m_handle));
}

bool FileLock::TryLock() {
    OVERLAPPED place{};
    m_isHeld = m_isHeld || LockFileEx(reinterpret_cast<HANDLE>(m_handle),
                                      LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                                      &place) != 0;
    return m_isHeld;
}

long ProcessId() {
    return static_cast<long>(GetCurrentProcessId());
}

std::string SystemName() {
    RTL_OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    using Function = LONG(WINAPI*)(RTL_OSVERSIONINFOW*);
    // GetVersionEx may report an older version than the real one.
    const auto get = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(
        GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
    if (get == nullptr || get(&version) != 0)
        return "Windows";
    return "Windows " + std::to_string(version.dwMajorVersion) + "." +
           std::to_string(version.dwMinorVersion) + "." + std::to_string(version.dwBuildNumber);
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
    const std::string folder = Variable("LOCALAPPDATA");
    if (folder.empty())
        throw ProblemError({.obstacle = Obstacle::NoFolderOfUser, .names = {"LOCALAPPDATA"}});
    return PathOf(folder) / "qxcontrols";
}

} // namespace qx::files
