// TempFolder: a new folder that is gone with the object.
#pragma once

#include <filesystem>
#include <string>

namespace qx::test {

class TempFolder {
public:
    TempFolder() {
        static int count = 0;
        do
            m_path = std::filesystem::temp_directory_path() /
                     ("qx-test-" + std::to_string(++count) + "-" +
                      std::to_string(reinterpret_cast<std::uintptr_t>(this) & 0xFFFFFFU));
        while (!std::filesystem::create_directory(m_path));
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
