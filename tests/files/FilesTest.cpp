// Files are replaced completely or not at all, and locked by one program at a time.

#include "files/Files.h"
#include "files/Sha256.h"
#include "support/HostileDisk.h"
#include "support/Problems.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace qx::test {

namespace {

namespace fs = std::filesystem;
using files::Deed;
using files::Obstacle;
using files::Problem;

Problem WriteRefusal(const fs::path& path, const std::string& bytes = "new") {
    return RefusalOf([&] { files::WriteFileAtomically(path, bytes); });
}

// Whether another process gets the lock.
bool AnotherProcessLocks(const fs::path& file) {
    const pid_t child = fork();
    if (child == 0) {
        files::FileLock lock(file);
        _exit(lock.TryLock() ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WEXITSTATUS(status) == 1;
}

} // namespace

TEST(Files, AreReplacedWhole) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    std::string bytes(300000, '\r');
    bytes += std::string("\0\n\xFF\x1A", 4);
    files::WriteFileAtomically(file, "old");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(file, folder / "link");
    files::WriteFileAtomically(folder / "link", bytes);
    EXPECT_TRUE(files::ReadFile(file) == bytes);
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST(Files, StayAsTheyAreWhenTheyCannotBeReplaced) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    files::WriteFileAtomically(file, "old");
    {
        const FullDisk full(1000);
        EXPECT_EQ(WriteRefusal(file, std::string(1001, 'n')),
                  Cannot(Deed::Write, file, std::errc::file_too_large));
    }
    EXPECT_EQ(files::ReadFile(file), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << "a file is left";

    EXPECT_EQ(WriteRefusal(folder / "absent/file"),
              Cannot(Deed::Write, folder / "absent/file", Obstacle::NoFolder,
                     {(folder / "absent").string()}));
    fs::create_directory(folder / "closed");
    files::WriteFileAtomically(folder / "closed/file", "old");
    {
        const ReadOnlyFolder closed(folder / "closed");
        EXPECT_EQ(WriteRefusal(folder / "closed/file"),
                  Cannot(Deed::Write, folder / "closed/file", std::errc::permission_denied));
    }
    EXPECT_EQ(files::ReadFile(folder / "closed/file"), "old");
    for (const fs::path& path : {file.parent_path(), fs::path("/dev/null")})
        EXPECT_EQ(WriteRefusal(path), Cannot(Deed::Write, path, Obstacle::NotOrdinary));
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

// Paths that the system would not open are not corrected to others, and write-protected files stay
// unchanged, no matter who owns them.
TEST(Files, AreOnlyReplacedWhereThePathLeadsAndNothingForbidsIt) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    files::WriteFileAtomically(file, "old");
    EXPECT_EQ(WriteRefusal(folder / "nosub/../file").obstacle, Obstacle::NoFolder);
    EXPECT_FALSE(files::IsSameFile(folder / "nosub/../file", file)) << "the path does not exist";
    fs::create_directory(folder / "sub");
    fs::create_hard_link(file, folder / "other name");
    EXPECT_TRUE(files::IsSameFile(folder / "sub/../file", folder / "other name"));
    fs::remove(folder / "other name");

    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const Problem isProtected = Cannot(Deed::Write, file, Obstacle::WriteProtected);
    EXPECT_EQ(WriteRefusal(file), isProtected);
    EXPECT_EQ(WordsOf(isProtected), file.string() + " cannot be written: it is write-protected");
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    if (geteuid() == 0) {
        fs::permissions(file.parent_path(), fs::perms::all);
        ASSERT_EQ(seteuid(65534), 0);
        EXPECT_EQ(WriteRefusal(file), isProtected) << "another user's";
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(files::ReadFile(file), "old");

    fs::create_symlink("sub/new", folder / "dangling");
    EXPECT_EQ(WriteRefusal(folder / "dangling"), Problem());
    EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
    EXPECT_EQ(files::ReadFile(folder / "sub/new"), "new");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_EQ(WriteRefusal(folder / "loop"),
              Cannot(Deed::Write, folder / "loop", Obstacle::DeadLink));
    EXPECT_TRUE(fs::is_symlink(folder / "loop"));
}

TEST(Files, MayHaveTheLongestNames) {
    const TempFolder folder;
    for (const char* last : {"a", "b"}) {
        const fs::path file =
            folder / (std::string(125, 'n') + "\u00e9" + std::string(127, 'n') + last);
        ASSERT_EQ(file.filename().string().size(), 255U);
        files::WriteFileAtomically(file, last);
        EXPECT_EQ(files::ReadFile(file), last);
        EXPECT_LE(files::FileLock::LockName(file).filename().string().size(), 255U);
        files::FileLock first(file);
        EXPECT_TRUE(first.TryLock()) << "another file has the same shortened name";
        files::FileLock second(file);
        EXPECT_FALSE(second.TryLock());
    }
}

TEST(Files, AreReadToTheirEndOrNotAtAll) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    files::WriteFileAtomically(file, std::string(1000, 'x'));
    EXPECT_EQ(files::ReadFile(file, 1000).size(), 1000U);
    const fs::path pipe = folder / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const auto readPipe = [&](std::size_t size) {
        const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
        const pid_t child = fork();
        if (child == 0) {
            const int end = open(pipe.c_str(), O_WRONLY);
            close(reader);
            for (std::size_t i = 0; i < size; ++i)
                (void)!write(end, "y", 1);
            _exit(0);
        }
        std::string bytes;
        const Problem refusal = RefusalOf([&] { bytes = files::ReadFile(pipe, 1000); });
        close(reader);
        waitpid(child, nullptr, 0);
        return std::make_pair(bytes.size(), refusal);
    };
    EXPECT_EQ(readPipe(1000), std::make_pair(std::size_t{1000}, Problem()));
    EXPECT_EQ(readPipe(20000).second, Cannot(Deed::Read, pipe, Obstacle::TooLarge, {}, 1000));
    files::WriteFileAtomically(file, std::string(1001, 'x'));
    for (const Problem& problem : {
             Cannot(Deed::Read, folder / "absent", std::errc::no_such_file_or_directory),
             Cannot(Deed::Read, folder / "", Obstacle::IsFolder),
             Cannot(Deed::Read, "/dev/zero", Obstacle::IsDevice),
             Cannot(Deed::Read, file, Obstacle::TooLarge, {}, 1000),
         })
        EXPECT_EQ(RefusalOf([&] { (void)files::ReadFile(problem.subject, 1000); }), problem);
}

// Printed output never goes to a file that happens to be opened in place of standard output.
TEST(Files, AreNeverOpenedAsStandardStreams) {
    const TempFolder folder;
    const auto inChild = [&](const std::function<void()>& open) {
        const pid_t child = fork();
        if (child == 0) {
            close(STDOUT_FILENO);
            open();
            const bool isWritten = write(STDOUT_FILENO, "printed", 7) == 7;
            _exit(isWritten ? 1 : 0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return WEXITSTATUS(status) == 0;
    };
    std::unique_ptr<files::FileLock> lock;
    EXPECT_TRUE(inChild([&] { lock = std::make_unique<files::FileLock>(folder / "file"); }));
    EXPECT_EQ(files::ReadFile(folder / "file.lock"), "");
    EXPECT_TRUE(inChild([] { files::PrepareStandardStreams(); }));
    EXPECT_TRUE(inChild([&] {
        files::PrepareStandardStreams();
        (void)open((folder / "other").c_str(), O_WRONLY | O_CREAT, 0600);
    }));
}

TEST(Files, WrittenByOthersAreReplacedWholeToo) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    const auto writeNew = [&](const fs::path& beside) {
        EXPECT_EQ(files::ReadFile(file), "old");
        files::WriteFileAtomically(beside, "new");
    };
    files::WriteFileAtomically(file, "old");
    files::WriteFileAtomically(folder / "file.part", "the user's own");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    fs::create_symlink(file, folder / "link");
    EXPECT_EQ(RefusalOf([&] {
                  files::WriteFileAtomically(folder / "link", [&](const fs::path& beside) {
                      writeNew(beside);
                      throw std::runtime_error("half-way");
                  });
              }),
              Problem{.system = "half-way"});
    EXPECT_EQ(files::ReadFile(file), "old");
    files::WriteFileAtomically(folder / "link", writeNew);
    EXPECT_EQ(files::ReadFile(file), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files::ReadFile(folder / "file.part"), "the user's own");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 3) << "a file is left";
    for (const char* refused : {"/dev/null", "/", "/tmp/"})
        EXPECT_EQ(RefusalOf([&] {
                      files::WriteFileAtomically(refused, [](const fs::path&) { FAIL(); });
                  }),
                  Cannot(Deed::Write, refused, Obstacle::NotOrdinary));
}

TEST(Files, AreLockedByOneAtATime) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    {
        files::FileLock lock(file);
        EXPECT_TRUE(lock.TryLock());
        EXPECT_TRUE(lock.TryLock()) << "it already holds the lock";
        files::FileLock second(file);
        EXPECT_FALSE(second.TryLock());
        EXPECT_FALSE(AnotherProcessLocks(file));
        files::WriteFileAtomically(file, "replaced");
        EXPECT_FALSE(second.TryLock()) << "replacing the file must not release the lock";
    }
    EXPECT_TRUE(AnotherProcessLocks(file));
    EXPECT_EQ(
        RefusalOf([&] { files::FileLock lock(folder / "absent/file"); }),
        Cannot(Deed::Create, folder / "absent/file.lock", std::errc::no_such_file_or_directory));
}

TEST(Files, AreRemovedWithAllAboveMadeBefore) {
    const TempFolder folder;
    files::MakeFolder(folder / "one/two");
    files::MakeFolder(folder / "one/two");
    const fs::path file = folder / "one/two/file";
    files::WriteFileAtomically(file, "x");
    EXPECT_EQ(RefusalOf([&] { files::MakeFolder(file / "below"); }),
              Cannot(Deed::Create, file / "below", std::errc::not_a_directory));
    files::RemoveFile(file);
    files::RemoveFile(file);
    EXPECT_FALSE(fs::exists(file));
}

TEST(Files, MadeForTheUserAreTheUsersOwn) {
    const TempFolder folder;
    for (const mode_t mask : {0000U, 0777U}) {
        const mode_t before = umask(mask);
        const fs::path made = folder / std::to_string(mask) / "below";
        files::MakeFolder(made);
        EXPECT_TRUE(files::WriteNewFile(made / "file", "bytes"));
        (void)files::FileLock(made / "file");
        umask(before);
        EXPECT_EQ(fs::status(made).permissions(), fs::perms::owner_all);
        EXPECT_EQ(fs::status(made.parent_path()).permissions(), fs::perms::owner_all);
        EXPECT_EQ(fs::status(made / "file").permissions(),
                  fs::perms::owner_read | fs::perms::owner_write);
        EXPECT_EQ(fs::status(made / "file.lock").permissions() & ~fs::perms::owner_all,
                  fs::perms::none);
    }
}

// The standard's examples, and sizes at which the padding needs another block.
TEST(Files, HashOfTheStandard) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
        {"abc", "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
        {"abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq",
         "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1"},
        {std::string(55, 'a'), "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318"},
        {std::string(64, 'a'), "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb"},
        {std::string(1000000, 'a'),
         "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0"},
    };
    for (const auto& [bytes, hash] : cases)
        EXPECT_EQ(files::Sha256(bytes), hash) << bytes.size();
}

} // namespace qx::test
