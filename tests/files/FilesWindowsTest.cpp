// The guarantees for files when another program is in the way, and UTF-16 names.
#include "files/Files.h"
#include "files/System.h"
#include "files/SystemTexts.h"
#include "support/Problems.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <iterator>
#include <set>
#include <thread>
#include <utility>

#include <windows.h>

namespace qx::files {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

using test::Cannot;
using test::RefusalOf;

namespace {

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
    Problem refusal = RefusalOf([&] { WriteFileAtomically(file, "newer"); });
    EXPECT_NE(std::exchange(refusal.system, ""), "");
    EXPECT_EQ(refusal, Cannot(Deed::Write, file, Obstacle::None));
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
    const auto writeRefusal = [](const fs::path& path) {
        return RefusalOf([&] { WriteFileAtomically(path, "new"); });
    };
    EXPECT_EQ(writeRefusal(file), Cannot(Deed::Write, file, Obstacle::WriteProtected));
    SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(ReadFile(file), "text");
    EXPECT_EQ(
        writeRefusal(folder / "no" / "file"),
        Cannot(Deed::Write, folder / "no" / "file", Obstacle::NoFolder, {TextOf(folder / "no")}));
    for (const char* const device : {"NUL", "CON", "\\\\.\\COM1"})
        EXPECT_EQ(writeRefusal(device), Cannot(Deed::Write, device, Obstacle::IsDevice));
    for (const Problem& problem : {
             Cannot(Deed::Read, folder / ".", Obstacle::IsFolder),
             Cannot(Deed::Read, "NUL", Obstacle::IsDevice),
             Cannot(Deed::Read, file, Obstacle::TooLarge, {}, 3),
         })
        EXPECT_EQ(RefusalOf([&] { (void)ReadFile(PathOf(problem.subject), 3); }), problem);
    RemoveFile(folder / "absent");
    RemoveFile(file);
    EXPECT_FALSE(fs::exists(file));
}

} // namespace qx::files
