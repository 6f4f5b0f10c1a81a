// The search for the libraries that a loaded library needs.

#include "qxcontrols/platform/SharedLibrary.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

namespace qx::test {
namespace {

namespace fs = std::filesystem;

// The folder "libraries" beside the program contains two libraries; one needs the other.
class LibrarySearch : public testing::Test {
protected:
    void SetUp() override {
        fs::remove_all(folder);
        fs::create_directories(folder / "library");
        fs::create_directories(folder / "elsewhere");
    }
    void TearDown() override {
        fs::current_path(start);
        std::error_code ignored; // wine keeps libraries open that failed to load
        fs::remove_all(folder, ignored);
    }
    void Place(const char* name, const char* place) const {
        fs::copy_file(start / "libraries" / name, folder / place / name);
    }
    int Loaded() const {
        const SharedLibrary library((folder / "library" / "com-needy.dll").string(), "library");
        return library.Required<int (*)()>("QxTwice")();
    }

    const fs::path start = fs::current_path();
    const fs::path folder = fs::temp_directory_path() / "qx library search";
};

TEST_F(LibrarySearch, NeededLibrariesAreFoundBesideItAndNotInTheCurrentFolder) {
    Place("com-needy.dll", "library");
    Place("com-needed.dll", "elsewhere");
    EXPECT_THROW((void)Loaded(), std::runtime_error);
    fs::current_path(folder / "elsewhere");
    EXPECT_THROW((void)Loaded(), std::runtime_error);
    Place("com-needed.dll", "library");
    EXPECT_EQ(Loaded(), 42);
    fs::current_path(folder / "library"); // a name without a folder is up to the user
    const SharedLibrary library("com-needy.dll", "library");
    EXPECT_EQ(library.Required<int (*)()>("QxTwice")(), 42);
}

} // namespace
} // namespace qx::test
