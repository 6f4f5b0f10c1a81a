#include "files/Files.h"

#include "files/Sha256.h"
#include "files/System.h"
#include "files/SystemTexts.h"

#include <chrono>
#include <system_error>
#include <utility>

namespace qx::files {

namespace {

namespace fs = std::filesystem;

constexpr const char* kNew = ".new-";     // part of the names of files being written
constexpr std::size_t kLongestName = 255; // bytes, on every supported system

[[noreturn]] void Fail(const fs::path& path, Deed deed, const std::error_code& reason) {
    throw ProblemError({.deed = deed, .subject = TextOf(path), .system = ReasonOf(reason)});
}

[[noreturn]] void Refuse(const fs::path& path, Obstacle obstacle) {
    throw ProblemError({.deed = Deed::Write, .subject = TextOf(path), .obstacle = obstacle});
}

void Require(const fs::path& path, const std::error_code& reason) {
    if (reason)
        Fail(path, Deed::Write, reason);
}

// Appends the ending and shortens the name as the system requires, keeping names distinct.
fs::path WithEnding(const fs::path& path, const std::string& ending) {
    constexpr std::size_t kHashDigits = 16;
    std::string name = TextOf(path.filename());
    if (name.size() + ending.size() > kLongestName) {
        const std::string hash = "-" + Sha256(name).substr(0, kHashDigits);
        std::size_t size = kLongestName - ending.size() - hash.size();
        while (size > 0 && (static_cast<unsigned char>(name[size]) & 0xC0U) == 0x80U)
            --size; // not inside a character
        name = name.substr(0, size) + hash;
    }
    return path.parent_path() / PathOf(name + ending);
}

// A new file that will replace another; the destructor deletes it unless it has.
class Replacement {
public:
    Replacement(const fs::path& path, Access access) : m_path(path) {
        std::error_code reason;
        m_status = fs::status(path, reason);
        if (fs::exists(m_status) && !fs::is_regular_file(m_status))
            Refuse(path, Obstacle::NotOrdinary);
        if (IsWriteProtected(path))
            Refuse(path, Obstacle::WriteProtected);
        m_target = TargetOf(path);
        for (int number = 0; m_file < 0; ++number) {
            m_temporary = WithEnding(m_target, kNew + std::to_string(ProcessId()) + "-" +
                                                   std::to_string(number));
            m_file = m_system.Create(m_temporary, access, reason);
            if (m_file < 0 && reason != std::errc::file_exists)
                Fail(path, Deed::Write, reason);
        }
    }
    ~Replacement() {
        std::error_code ignored;
        if (m_file >= 0)
            m_system.Close(m_file, ignored);
        if (!m_temporary.empty())
            m_system.Remove(m_temporary, ignored);
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void Write(std::string_view bytes) {
        std::error_code reason;
        while (!bytes.empty()) {
            bytes.remove_prefix(m_system.Write(m_file, bytes.data(), bytes.size(), reason));
            Require(m_path, reason);
        }
        Finish();
    }
    // Lets the function write to the file with this name.
    void Write(const std::function<void(const fs::path&)>& write) {
        Close();
        write(m_temporary);
        std::error_code reason;
        m_file = m_system.OpenForFlushing(m_temporary, reason);
        Require(m_path, reason);
        Finish();
    }

    // Replaces the old file by the new one.
    void Commit() {
        std::error_code reason;
        if (fs::exists(m_status))
            fs::permissions(m_temporary, m_status.permissions(), reason);
        if (!reason)
            m_system.Rename(m_temporary, m_target, reason);
        Require(m_path, reason);
        m_temporary.clear();
        m_system.FlushFolder(m_target.parent_path(), reason); // the file is complete anyway
    }
    // The same, but only if there is no such file; returns true once the new file is durable.
    [[nodiscard]] bool CommitNew() {
        std::error_code reason;
        const bool isNew = m_system.RenameToNew(m_temporary, m_target, reason);
        Require(m_path, reason);
        if (!isNew)
            return false;
        m_temporary.clear();
        m_system.FlushFolder(m_target.parent_path(), reason);
        Require(m_path, reason);
        return true;
    }

private:
    void Finish() {
        std::error_code reason;
        m_system.Flush(m_file, reason);
        Require(m_path, reason);
        Close();
    }
    void Close() {
        std::error_code reason;
        m_system.Close(std::exchange(m_file, -1), reason);
        Require(m_path, reason);
    }

    System& m_system = System::Current();
    fs::path m_path;
    fs::file_status m_status;
    fs::path m_target;
    fs::path m_temporary;
    int m_file = -1;
};

} // namespace

bool IsSameFile(const fs::path& one, const fs::path& other) {
    std::error_code reason; // set if one of them does not exist
    return fs::equivalent(one, other, reason) && !reason;
}

void WriteFileAtomically(const fs::path& path, std::string_view bytes) {
    Replacement replacement(path, Access::Shared);
    replacement.Write(bytes);
    replacement.Commit();
}

void WriteFileAtomically(const fs::path& path, const std::function<void(const fs::path&)>& write) {
    Replacement replacement(path, Access::Shared);
    replacement.Write(write);
    replacement.Commit();
}

bool WriteNewFile(const fs::path& path, std::string_view bytes) {
    Replacement replacement(path, Access::Private);
    replacement.Write(bytes);
    return replacement.CommitNew();
}

void RemoveLeftovers(const fs::path& folder) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, ignored)) {
        const bool isLeftover = TextOf(entry.path().filename()).find(kNew) != std::string::npos &&
                                fs::file_time_type::clock::now() - entry.last_write_time(ignored) >
                                    std::chrono::hours(24);
        if (isLeftover && entry.is_regular_file(ignored))
            System::Current().Remove(entry.path(), ignored);
    }
}

void MakeFolder(const fs::path& path) {
    std::error_code reason;
    if (path.empty() || fs::is_directory(path, reason))
        return;
    MakeFolder(path.parent_path());
    System::Current().MakeFolder(path, reason);
    if (!reason)
        System::Current().FlushFolder(path.parent_path(), reason);
    if (reason)
        Fail(path, Deed::Create, reason);
}

void RemoveFile(const fs::path& path) {
    std::error_code reason;
    System::Current().Remove(path, reason);
    if (!reason)
        System::Current().FlushFolder(path.parent_path(), reason);
    if (reason)
        Fail(path, Deed::Remove, reason);
}

fs::path FileLock::LockName(const fs::path& path) {
    return WithEnding(path, ".lock");
}

} // namespace qx::files
