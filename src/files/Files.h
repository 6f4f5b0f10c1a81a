// Files: all that is particular to the system about files and folders, for the host layer and the
// simulated keyboard.
//
// Every failure with a file is a FileFailure.
#pragma once

#include "files/Limits.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::files {

// What could not be done with a file or folder: the message names it and the system's reason.
class FileFailure : public std::runtime_error {
public:
    FileFailure(const std::filesystem::path& file, const std::string& what,
                const std::string& reason);

    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }

private:
    std::filesystem::path m_file;
};

// All bytes of the file, or of a pipe to its end. Folders, devices, silent pipes and what has more
// than `most` bytes are refused.
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path,
                                   std::uintmax_t most = kMostOfAny);

// Whether both name the same existing file, by whatever paths and links.
[[nodiscard]] bool IsSameFile(const std::filesystem::path& one, const std::filesystem::path& other);

// Gives the file these bytes in one step: whatever happens, also a loss of power, the file holds
// either its old bytes or the new ones. Links are followed, also those to files that are not there
// yet; an existing file keeps its permissions. Refused are a file that is write-protected or not an
// ordinary one, and a path through a folder that does not exist.
void WriteFileAtomically(const std::filesystem::path& path, std::string_view bytes);

// The same with bytes that `write` puts into the file whose name it is given: an empty one beside
// the other, which is gone when `write` throws.
void WriteFileAtomically(const std::filesystem::path& path,
                         const std::function<void(const std::filesystem::path&)>& write);

// Makes a file of the user's own of these bytes, which is for good on the disk when it returns true
// and is never seen half-written. False, and nothing done, where there is a file of this name
// already, however many programs make one at the same time.
[[nodiscard]] bool WriteNewFile(const std::filesystem::path& path, std::string_view bytes);

// Removes what programs that were killed while they wrote have left in the folder, from the day
// before and earlier; what cannot be removed stays.
void RemoveLeftovers(const std::filesystem::path& folder);

// The number of this program among those that run.
[[nodiscard]] long ProcessId();

// Makes the folder and those above it where they are missing, as folders of the user's own that
// survive a loss of power.
void MakeFolder(const std::filesystem::path& path);

// Removes the file, for good when it returns; one that is not there is no failure.
void RemoveFile(const std::filesystem::path& path);

// Whether the file exists and its permissions forbid writing to it.
[[nodiscard]] bool IsWriteProtected(const std::filesystem::path& path);

// Makes the standard streams safe to use: files that are opened later do not become one that is
// closed; on Windows a console is sent its own characters, and a file the bytes as they are. Called
// once, at the program's start.
void PrepareStandardStreams();

// A claim to a file, kept against other programs and against other claims of this one. What is
// locked is a file beside it, which stays; so the file itself can be replaced meanwhile.
class FileLock {
public:
    // Names the file, which need not exist. Throws when the lock file cannot be made.
    explicit FileLock(const std::filesystem::path& path);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Whether the claim is this object's now; it is held until the object's end. Does not wait.
    [[nodiscard]] bool TryLock();

    // What is locked: the file's name with ".lock" at its end, shortened where it would be too
    // long.
    [[nodiscard]] static std::filesystem::path LockName(const std::filesystem::path& path);

private:
    std::intptr_t m_handle; // the system's, of the lock file
    bool m_isHeld = false;
};

// The operating system and its version, "Linux 6.1.0 x86_64".
[[nodiscard]] std::string SystemName();

// The folder of the program that runs.
[[nodiscard]] std::filesystem::path ExecutableFolder();

// Where these programs keep the user's data. It need not exist. Throws std::runtime_error where the
// user has no folder of his own.
[[nodiscard]] std::filesystem::path UserDataFolder();

#ifndef _WIN32
// The file of the user's preferences, which the registry keeps on Windows. It need not exist.
// Throws as UserDataFolder does.
[[nodiscard]] std::filesystem::path UserPreferencesFile();
#endif

// How many columns the terminal has that standard error is; 0 where it is none.
[[nodiscard]] int ErrorColumns();

// Whether that terminal shows colours for the usual sequences of characters.
[[nodiscard]] bool ErrorShowsColors();

inline constexpr int kUsualColumns = 80; // of a terminal that does not tell

} // namespace qx::files
