// HostileDisk: full disks and read-only folders, for the lifetime of the objects.
#pragma once

#include <csignal>
#include <filesystem>

#include <sys/resource.h>
#include <unistd.h>

namespace qx::test {

// Files cannot grow beyond this many bytes, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t size) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_before{};
};

// Nothing can be created in the folder. Its parent folder and the files there stay accessible to
// everybody: the superuser, who is exempt from permissions, becomes another user meanwhile.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(const std::filesystem::path& folder) : m_folder(folder) {
        namespace fs = std::filesystem;
        const fs::path parent = folder.parent_path();
        fs::permissions(parent, fs::perms::all);
        for (const auto& entry : fs::directory_iterator(parent))
            fs::permissions(entry.path(), fs::perms::all);
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec |
                                    fs::perms::others_read | fs::perms::others_exec);
        constexpr uid_t kNobody = 65534;
        m_isChanged = geteuid() == 0 && seteuid(kNobody) == 0;
    }
    ~ReadOnlyFolder() {
        if (m_isChanged)
            m_isChanged = seteuid(0) != 0;
        std::filesystem::permissions(m_folder, std::filesystem::perms::all);
    }
    ReadOnlyFolder(const ReadOnlyFolder&) = delete;
    ReadOnlyFolder& operator=(const ReadOnlyFolder&) = delete;

private:
    std::filesystem::path m_folder;
    bool m_isChanged = false;
};

} // namespace qx::test
