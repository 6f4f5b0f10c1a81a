// TempFolder: a new folder, deleted by the destructor.
#pragma once

#include <filesystem>
#include <string>

namespace qx::test {

class TempFolder {
public:
    explicit TempFolder(
        const std::filesystem::path& within = std::filesystem::temp_directory_path()) {
        static int count = 0;
        do
            m_path = within / ("qx-test-" + std::to_string(++count) + "-" +
                               std::to_string(reinterpret_cast<std::uintptr_t>(this) & 0xFFFFFFU));
        while (!std::filesystem::create_directory(m_path));
    }
    // A memory file system if there is one, for tests that flush thousands of files.
    [[nodiscard]] static std::filesystem::path InMemory() {
        const std::filesystem::path shared = "/dev/shm";
        std::error_code ignored;
        return std::filesystem::is_directory(shared, ignored)
                   ? shared
                   : std::filesystem::temp_directory_path();
    }
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] std::filesystem::path operator/(const std::string& name) const {
        return m_path / name;
    }

private:
    std::filesystem::path m_path;
};

} // namespace qx::test
