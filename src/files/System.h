// System: the operating system's calls by which files and folders are changed. Everything that
// Files writes goes through the current one, so that tests can make any call fail and find out what
// a loss of power would leave.
//
// Each call reports through `reason`, which is clear after a success. Files are numbers as the
// system gives them, never those of the standard streams.
#pragma once

#include <cstddef>
#include <filesystem>
#include <system_error>

namespace qx::files {

// Who may use a new file: whom the user's settings let, or the user alone whatever they are.
enum class Access { Shared, Private };

class System {
public:
    using Path = std::filesystem::path;
    using Reason = std::error_code;

    System() = default;
    virtual ~System() = default;
    System(const System&) = delete;
    System& operator=(const System&) = delete;

    // A new, empty file for writing; -1 on failure, as where the name is in use.
    virtual int Create(const Path& path, Access access, Reason& reason);
    // An existing file, to flush it; -1 on failure.
    virtual int OpenForFlushing(const Path& path, Reason& reason);
    // Appends some of the bytes and returns how many.
    virtual std::size_t Write(int file, const char* bytes, std::size_t size, Reason& reason);
    virtual void Flush(int file, Reason& reason);
    virtual void Close(int file, Reason& reason);
    // Gives the file another name, and replaces the file of that name.
    virtual void Rename(const Path& from, const Path& to, Reason& reason);
    // The same, but false, and nothing done, where the name is in use.
    virtual bool RenameToNew(const Path& from, const Path& to, Reason& reason);
    // A file that is not there is no failure.
    virtual void Remove(const Path& path, Reason& reason);
    // A folder of the user's own.
    virtual void MakeFolder(const Path& path, Reason& reason);
    // Puts the folder's names on the disk, as far as the system can be asked to.
    virtual void FlushFolder(const Path& path, Reason& reason);

    [[nodiscard]] static System& Current();
    // Takes another one's place for as long as this object lives.
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

// The file itself that a path means, which need not exist: behind links, in a folder that exists.
// Throws std::runtime_error where the links or the folder lead nowhere.
[[nodiscard]] std::filesystem::path TargetOf(const std::filesystem::path& path);

} // namespace qx::files
