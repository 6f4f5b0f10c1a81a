// System: the operating system's calls that change files and folders. Everything that Files writes
// goes through the current System, so that tests can make any call fail and examine the state after
// a simulated power failure.
//
// Each call reports errors through `reason`, which is cleared on success. Files are numbers of the
// system, never those of the standard streams.
#pragma once

#include <cstddef>
#include <filesystem>
#include <system_error>

namespace qx::files {

// The permissions of a new file: according to the user's settings, or for the user only.
enum class Access { Shared, Private };

class System {
public:
    using Path = std::filesystem::path;
    using Reason = std::error_code;

    System() = default;
    virtual ~System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    // A new, empty file for writing; -1 on failure, including a name already in use.
    virtual int Create(const Path& path, Access access, Reason& reason);
    // Opens an existing file to flush it; -1 on failure.
    virtual int OpenForFlushing(const Path& path, Reason& reason);
    // Appends at least one of the bytes and returns how many.
    virtual std::size_t Write(int file, const char* bytes, std::size_t size, Reason& reason);
    virtual void Flush(int file, Reason& reason);
    virtual void Close(int file, Reason& reason);
    // Renames the file, replacing any file of the new name.
    virtual void Rename(const Path& from, const Path& to, Reason& reason);
    // The same, but returns false and does nothing if the new name is in use.
    virtual bool RenameToNew(const Path& from, const Path& to, Reason& reason);
    // A missing file is not an error.
    virtual void Remove(const Path& path, Reason& reason);
    // A folder private to the user.
    virtual void MakeFolder(const Path& path, Reason& reason);
    // Writes the folder's entries to the disk, as far as the system supports that.
    virtual void FlushFolder(const Path& path, Reason& reason);

    [[nodiscard]] static System& Current();
    // Replaces the current System during its lifetime.
    class Replacement {
    public:
        explicit Replacement(System& system);
        ~Replacement();
        Replacement(const Replacement&) = delete;
        Replacement& operator=(const Replacement&) = delete;

    private:
        System* m_previous;
    };
};

// The path of the actual file, with links resolved; the file need not exist, but its folder must.
// Throws ProblemError if the links or the folder lead nowhere.
[[nodiscard]] std::filesystem::path TargetOf(const std::filesystem::path& path);

} // namespace qx::files
