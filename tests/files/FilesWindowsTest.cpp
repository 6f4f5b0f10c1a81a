// The guarantees for files when another program is in the way, and UTF-16 names.
#include "files/Files.h"
#include "files/System.h"
#include "files/SystemTexts.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <iterator>
#include <set>
#include <thread>

#include <windows.h>

namespace qx::files {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

namespace {

std::string Refusal(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

// Opens the file so that nobody else may replace or delete it.
HANDLE OpenAlone(const fs::path& file) {
    return CreateFileW(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0,
                       nullptr);
}

} // namespace

TEST(WindowsFiles, AReaderHoldsAWriteUpAndDoesNotMakeItFail) {
    const test::TempFolder folder;
    const fs::path file = folder / "file";
    WriteFileAtomically(file, "old");
    HANDLE reader = OpenAlone(file);
    ASSERT_NE(reader, INVALID_HANDLE_VALUE);
    std::thread reading([&] {
        std::this_thread::sleep_for(200ms);
        CloseHandle(reader);
    });
    WriteFileAtomically(file, "new");
    reading.join();
    EXPECT_EQ(ReadFile(file), "new");

    // A reader that stays makes the write fail, and the file is unchanged.
    reader = OpenAlone(file);
    const std::string refusal = Refusal([&] { WriteFileAtomically(file, "newer"); });
    EXPECT_EQ(refusal.find(TextOf(file) + " cannot be written: "), 0U) << refusal;
    EXPECT_EQ(ReadFile(file), "new");
    CloseHandle(reader);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "."), {}), 1) << "nothing is left";
}

TEST(WindowsFiles, NamesHaveAllLetters) {
    const test::TempFolder folder;
    const std::string name = "Gr\xC3\xB6\xC3\x9F"
                             "e \xE2\x82\xAC \xD0\x96.json";
    const fs::path file = folder / "." / PathOf(name);
    WriteFileAtomically(file, "text");
    EXPECT_EQ(ReadFile(file), "text");
    FileLock lock(file);
    EXPECT_TRUE(lock.TryLock());
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder / "."))
        names.insert(TextOf(entry.path().filename()));
    EXPECT_EQ(names, (std::set<std::string>{name, name + ".lock"}));
    EXPECT_EQ(TextOf(PathOf(name)), name);
    // An unpaired surrogate is not a character, but must not cause a failure.
    EXPECT_EQ(TextOf(fs::path(L"a\xD800z")), "a\xEF\xBF\xBDz");
    SetEnvironmentVariableW(L"QX_TEST", L"\x20AC");
    EXPECT_EQ(Variable("QX_TEST"), "\xE2\x82\xAC");
    EXPECT_EQ(Variable("QX_TEST_NOT_SET"), "");
}

TEST(WindowsFiles, OneOfManyWritersMakesANewFile) {
    const test::TempFolder folder;
    constexpr int kFiles = 40;
    std::atomic<int> made = 0;
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 4; ++writer)
        writers.emplace_back([&, writer] {
            for (int i = 0; i < kFiles; ++i)
                made += WriteNewFile(folder / std::to_string(i), std::to_string(writer)) ? 1 : 0;
        });
    for (std::thread& writer : writers)
        writer.join();
    EXPECT_EQ(made, kFiles);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "."), {}), kFiles);
}

TEST(WindowsFiles, ALockBelongsToOneObject) {
    const test::TempFolder folder;
    FileLock other(folder / "file");
    {
        FileLock lock(folder / "file");
        EXPECT_TRUE(lock.TryLock());
        EXPECT_TRUE(lock.TryLock());
        EXPECT_FALSE(other.TryLock());
    }
    EXPECT_TRUE(other.TryLock());
}

TEST(WindowsFiles, ErrorsNameTheFile) {
    const test::TempFolder folder;
    const fs::path file = folder / "file";
    WriteFileAtomically(file, "text");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(Refusal([&] { WriteFileAtomically(file, "new"); }),
              TextOf(file) + " cannot be written: it is write-protected");
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(ReadFile(file), "text");
    EXPECT_EQ(Refusal([&] { WriteFileAtomically(folder / "no" / "file", "new"); }),
              TextOf(folder / "no" / "file") + " cannot be written: there is no folder " +
                  TextOf(folder / "no"));
    EXPECT_EQ(Refusal([&] { (void)ReadFile(folder / "."); }),
              TextOf(folder / ".") + " cannot be read: it is a folder");
    EXPECT_EQ(Refusal([&] { (void)ReadFile("NUL"); }),
              "NUL cannot be read: it is a device, not a file");
    for (const char* const device : {"NUL", "CON", "\\\\.\\COM1"})
        EXPECT_EQ(Refusal([&] { WriteFileAtomically(device, "new"); }),
                  std::string(device) + " cannot be written: it is a device, not a file");
    EXPECT_EQ(Refusal([&] { (void)ReadFile(file, 3); }),
              TextOf(file) + " cannot be read: it has more than 3 bytes");
    RemoveFile(folder / "absent");
    RemoveFile(file);
    EXPECT_FALSE(fs::exists(file));
}

} // namespace qx::files
