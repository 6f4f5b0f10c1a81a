// Files are replaced completely or not at all, and locked by one program at a time.

#include "files/Files.h"
#include "files/Sha256.h"
#include "support/HostileDisk.h"
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

std::string Refusal(const std::function<void()>& action) {
    try {
        action();
        return {};
    } catch (const std::runtime_error& error) {
        return error.what();
    }
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
        const std::string reason =
            Refusal([&] { files::WriteFileAtomically(file, std::string(1001, 'n')); });
        EXPECT_NE(reason.find(file.string()), std::string::npos);
        EXPECT_NE(reason.find("File too large"), std::string::npos) << reason;
    }
    EXPECT_EQ(files::ReadFile(file), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 1) << "a file is left";

    EXPECT_NE(Refusal([&] {
                  files::WriteFileAtomically(folder / "absent/file", "x");
              }).find("there is no folder " + (folder / "absent").string()),
              std::string::npos);
    fs::create_directory(folder / "closed");
    files::WriteFileAtomically(folder / "closed/file", "old");
    {
        const ReadOnlyFolder closed(folder / "closed");
        EXPECT_NE(Refusal([&] {
                      files::WriteFileAtomically(folder / "closed/file", "new");
                  }).find("Permission denied"),
                  std::string::npos);
    }
    EXPECT_EQ(files::ReadFile(folder / "closed/file"), "old");
    EXPECT_NE(Refusal([&] { files::WriteFileAtomically(file.parent_path(), "x"); }), "");
    EXPECT_NE(Refusal([&] { files::WriteFileAtomically("/dev/null", "x"); }), "");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

// Paths that the system would not open are not corrected to others, and write-protected files stay
// unchanged, no matter who owns them.
TEST(Files, AreOnlyReplacedWhereThePathLeadsAndNothingForbidsIt) {
    const TempFolder folder;
    const fs::path file = folder / "file";
    files::WriteFileAtomically(file, "old");
    const auto refusal = [](const fs::path& path) {
        return Refusal([&] { files::WriteFileAtomically(path, "new"); });
    };
    EXPECT_NE(refusal(folder / "nosub/../file").find("there is no folder"), std::string::npos);
    EXPECT_FALSE(files::IsSameFile(folder / "nosub/../file", file)) << "the path does not exist";
    fs::create_directory(folder / "sub");
    fs::create_hard_link(file, folder / "other name");
    EXPECT_TRUE(files::IsSameFile(folder / "sub/../file", folder / "other name"));
    fs::remove(folder / "other name");

    fs::permissions(file, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    EXPECT_EQ(refusal(file), file.string() + " cannot be written: it is write-protected");
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    if (geteuid() == 0) {
        fs::permissions(file.parent_path(), fs::perms::all);
        ASSERT_EQ(seteuid(65534), 0);
        EXPECT_NE(refusal(file).find("write-protected"), std::string::npos) << "another user's";
        ASSERT_EQ(seteuid(0), 0);
    }
    EXPECT_EQ(files::ReadFile(file), "old");

    fs::create_symlink("sub/new", folder / "dangling");
    EXPECT_EQ(refusal(folder / "dangling"), "");
    EXPECT_TRUE(fs::is_symlink(folder / "dangling"));
    EXPECT_EQ(files::ReadFile(folder / "sub/new"), "new");
    fs::create_symlink("loop", folder / "loop");
    EXPECT_NE(refusal(folder / "loop"), "");
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
        const std::string refusal = Refusal([&] { bytes = files::ReadFile(pipe, 1000); });
        close(reader);
        waitpid(child, nullptr, 0);
        return std::make_pair(bytes.size(), refusal);
    };
    EXPECT_EQ(readPipe(1000), std::make_pair(std::size_t{1000}, std::string()));
    EXPECT_NE(readPipe(20000).second.find("it has more than 1000 bytes"), std::string::npos);
    const std::pair<fs::path, const char*> refused[] = {
        {folder / "absent", "No such file or directory"},
        {folder / "", "it is a folder"},
        {"/dev/zero", "it is a device"},
    };
    for (const auto& [path, reason] : refused)
        EXPECT_NE(Refusal([&, &path = path] { (void)files::ReadFile(path); }).find(reason),
                  std::string::npos)
            << path;
    files::WriteFileAtomically(file, std::string(1001, 'x'));
    EXPECT_NE(Refusal([&] { (void)files::ReadFile(file, 1000); }).find("more than 1000 bytes"),
              std::string::npos);
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
    EXPECT_EQ(Refusal([&] {
                  files::WriteFileAtomically(folder / "link", [&](const fs::path& beside) {
                      writeNew(beside);
                      throw std::runtime_error("half-way");
                  });
              }),
              "half-way");
    EXPECT_EQ(files::ReadFile(file), "old");
    files::WriteFileAtomically(folder / "link", writeNew);
    EXPECT_EQ(files::ReadFile(file), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(files::ReadFile(folder / "file.part"), "the user's own");
    EXPECT_EQ(std::distance(fs::directory_iterator(file.parent_path()), {}), 3) << "a file is left";
    for (const char* refused : {"/dev/null", "/", "/tmp/"})
        EXPECT_NE(Refusal([&] {
                      files::WriteFileAtomically(refused, [](const fs::path&) { FAIL(); });
                  }).find("not an ordinary file"),
                  std::string::npos);
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
    EXPECT_NE(Refusal([&] { files::FileLock lock(folder / "absent/file"); }), "");
}

TEST(Files, AreRemovedWithAllAboveMadeBefore) {
    const TempFolder folder;
    files::MakeFolder(folder / "one/two");
    files::MakeFolder(folder / "one/two");
    const fs::path file = folder / "one/two/file";
    files::WriteFileAtomically(file, "x");
    EXPECT_NE(Refusal([&] { files::MakeFolder(file / "below"); }).find(file.string()),
              std::string::npos);
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
