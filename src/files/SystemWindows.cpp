// All that is particular to Windows.

#include "files/Files.h"
#include "files/System.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#include <windows.h>

namespace qx::files {

namespace {

namespace fs = std::filesystem;

std::error_code Last() {
    return {errno, std::generic_category()};
}

std::error_code LastOfWindows() {
    return {static_cast<int>(GetLastError()), std::system_category()};
}

void Tell(bool isDone, std::error_code& reason) {
    reason = isDone ? std::error_code() : Last();
}

fs::path FolderFrom(const wchar_t* variable) {
    const wchar_t* folder = _wgetenv(variable);
    if (folder == nullptr || *folder == L'\0')
        throw std::runtime_error(fs::path(variable).string() + " names no folder of the user");
    return folder;
}

} // namespace

// The user's own folders are private as they are.
int System::Create(const Path& path, Access /*access*/, Reason& reason) {
    const int file = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                            _S_IREAD | _S_IWRITE);
    Tell(file >= 0, reason);
    return file;
}

int System::OpenForFlushing(const Path& path, Reason& reason) {
    const int file = _wopen(path.c_str(), _O_RDWR | _O_BINARY | _O_NOINHERIT);
    Tell(file >= 0, reason);
    return file;
}

std::size_t System::Write(int file, const char* bytes, std::size_t size, Reason& reason) {
    constexpr std::size_t kMost = 1 << 20;
    const int written = _write(file, bytes, static_cast<unsigned>(size < kMost ? size : kMost));
    Tell(written > 0, reason);
    return written < 0 ? 0 : static_cast<std::size_t>(written);
}

void System::Flush(int file, Reason& reason) {
    Tell(_commit(file) == 0, reason);
}

void System::Close(int file, Reason& reason) {
    Tell(_close(file) == 0, reason);
}

void System::Rename(const Path& from, const Path& to, Reason& reason) {
    reason.clear();
    if (!MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        reason = LastOfWindows();
}

bool System::RenameToNew(const Path& from, const Path& to, Reason& reason) {
    reason.clear();
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH))
        return true;
    const DWORD number = GetLastError();
    if (number != ERROR_ALREADY_EXISTS && number != ERROR_FILE_EXISTS)
        reason = LastOfWindows();
    return false;
}

void System::Remove(const Path& path, Reason& reason) {
    fs::remove(path, reason);
}

void System::MakeFolder(const Path& path, Reason& reason) {
    fs::create_directory(path, reason);
}

void System::FlushFolder(const Path& /*path*/, Reason& reason) {
    reason.clear(); // a renaming that is written through does it
}

std::string ReadFile(const fs::path& path, std::uintmax_t most) {
    const auto fail = [&](const std::string& why) {
        throw std::runtime_error(path.string() + " cannot be read: " + why);
    };
    std::error_code reason;
    if (fs::is_directory(path, reason))
        fail("it is a folder");
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(_wfopen(path.c_str(), L"rbN"),
                                                               &std::fclose);
    if (!file)
        fail(Last().message());
    std::string bytes;
    char buffer[65536];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, file.get())) {
        bytes.append(buffer, count);
        if (bytes.size() > most)
            fail("it has more than " + std::to_string(most) + " bytes");
    }
    if (std::ferror(file.get()) != 0)
        fail(Last().message());
    return bytes;
}

bool IsWriteProtected(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

void GuardStandardStreams() {} // no file becomes a standard stream here

FileLock::FileLock(const fs::path& path) {
    const fs::path name = LockName(path);
    const HANDLE handle =
        CreateFileW(name.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::runtime_error(name.string() + " cannot be made: " + LastOfWindows().message());
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

int ErrorColumns() {
    const HANDLE error = GetStdHandle(STD_ERROR_HANDLE);
    DWORD mode = 0;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleMode(error, &mode) == 0)
        return 0;
    const bool isKnown = GetConsoleScreenBufferInfo(error, &info) != 0;
    return isKnown ? info.srWindow.Right - info.srWindow.Left + 1 : kUsualColumns;
}

long ProcessId() {
    return static_cast<long>(GetCurrentProcessId());
}

std::string SystemName() {
    RTL_OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    using Function = LONG(WINAPI*)(RTL_OSVERSIONINFOW*);
    // Programs that ask GetVersionEx are shown an older system than there is.
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
    return FolderFrom(L"LOCALAPPDATA") / "qxcontrols";
}

} // namespace qx::files
