// Files: the system-specific code for files and folders, for the host layer and the simulated
// keyboard.
//
// Every failure with a file is a ProblemError.
#pragma once

#include "files/Limits.h"
#include "files/Problem.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace qx::files {

// All bytes of the file, or of a pipe until its end. Refuses folders, devices, pipes without data
// and files of more than `most` bytes.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path,
                                   std::uintmax_t most = kMostOfAny);

// Whether both paths lead to the same existing file, through whatever links.
[[nodiscard]] bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

// Replaces the file's bytes in one step: whatever happens, even a power failure, the file holds
// either its old bytes or the new ones. Follows links, even to a file that does not exist yet; an
// existing file keeps its permissions. Refuses a write-protected or non-regular file, and a path
// through a folder that does not exist.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

// The same with a function that writes the bytes: it gets the name of an empty file beside the
// other one. If it throws, that file is deleted.
void WriteFileAtomically(const std::filesystem::path& path,
                         const std::function<void(const std::filesystem::path&)>& write);

// Creates a file, private to the user, with these bytes. It is never seen half-written, and is
// durable once the function returns true. Returns false and does nothing if the file exists, even
// if several programs try to create it at the same time.
[[nodiscard]] bool WriteNewFile(const std::filesystem::path& path, std::string_view bytes);

// Deletes temporary files in the folder, at least a day old, of programs that were killed while
// writing; ignores those that cannot be deleted.
void RemoveLeftovers(const std::filesystem::path& folder);

// The process id of this program.
[[nodiscard]] long ProcessId();

// Creates the folder and any missing parents, private to the user and durable.
void MakeFolder(const std::filesystem::path& path);

// Deletes the file durably; a missing file is not an error.
void RemoveFile(const std::filesystem::path& path);

// Whether the file exists and its permissions forbid writing to it.
[[nodiscard]] bool IsWriteProtected(const std::filesystem::path& path);

// Makes the standard streams safe to use: a file opened later never gets the descriptor of a
// closed stream; on Windows, text is converted for a console and written unchanged to a file. To be
// called once, when the program starts.
void PrepareStandardStreams();

// A lock on a file against other programs and other locks of this one. The lock is on a separate
// file beside it, which is not deleted, so that the file itself can be replaced meanwhile.
class FileLock {
public:
    // The file need not exist. Throws if the lock file cannot be created.
    explicit FileLock(const std::filesystem::path& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Whether this object holds the lock now; it is released by the destructor. Does not wait.
    [[nodiscard]] bool TryLock();

    // The lock file: the file's name with ".lock" appended, shortened if it is too long.
    [[nodiscard]] static std::filesystem::path LockName(const std::filesystem::path& path);

private:
    std::intptr_t m_handle; // the system's handle of the lock file
    bool m_isHeld = false;
};

// The operating system and its version, "Linux 6.1.0 x86_64".
[[nodiscard]] std::string SystemName();

// The folder of the running program.
[[nodiscard]] std::filesystem::path ExecutableFolder();

// The folder for the user's data, which need not exist. Throws ProblemError if the user has no
// folder of their own.
[[nodiscard]] std::filesystem::path UserDataFolder();

#ifndef _WIN32
// The file of the user's preferences, which need not exist; on Windows the registry is used
// instead. Throws like UserDataFolder.
[[nodiscard]] std::filesystem::path UserPreferencesFile();
#endif

// The number of columns if standard error is a terminal; otherwise 0.
[[nodiscard]] int ErrorColumns();

// Whether that terminal supports colours through the usual escape sequences.
[[nodiscard]] bool ErrorShowsColors();

inline constexpr int kUsualColumns = 80; // for a terminal that does not report them

} // namespace qx::files
