// A power failure at any moment, and a disk on which any call fails: files stay intact.

#include "files/Files.h"
#include "support/RecordingDisk.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>

namespace qx::test {

namespace {

namespace fs = std::filesystem;

// An operation on files, and the allowed contents of the folder's "file" during and after it; none
// if the file may be missing.
using Bytes = std::optional<std::string>;
struct DiskStory {
    const char* name;
    std::function<void(const fs::path& folder)> work;
    std::vector<Bytes> meanwhile;
    Bytes afterwards;
};
const DiskStory kDiskStories[] = {
    {"replaced",
     [](const fs::path& folder) { files::WriteFileAtomically(folder / "file", "new"); },
     {"old", "new"},
     "new"},
    {"replaced by others",
     [](const fs::path& folder) {
         files::WriteFileAtomically(folder / "file", [](const fs::path& beside) {
             std::ofstream(beside, std::ios::binary) << "new";
         });
     },
     {"old", "new"},
     "new"},
    {"removed",
     [](const fs::path& folder) { files::RemoveFile(folder / "file"); },
     {"old", std::nullopt},
     std::nullopt},
    {"made in a new folder",
     [](const fs::path& folder) {
         files::RemoveFile(folder / "file");
         files::MakeFolder(folder / "one/two");
         EXPECT_TRUE(files::WriteNewFile(folder / "one/two/file", "new"));
     },
     {"old", std::nullopt, "new"},
     "new"},
};

Bytes BytesIn(const fs::path& folder) {
    for (const char* file : {"file", "one/two/file"})
        if (fs::exists(folder / file))
            return files::ReadFile(folder / file);
    return std::nullopt;
}

} // namespace

// Whenever the power fails, each file is intact, and everything reported as done is on the disk.
TEST(DiskFault, FilesSurviveALossOfPowerAtAnyMoment) {
    for (const DiskStory& story : kDiskStories) {
        SCOPED_TRACE(story.name);
        const TempFolder folder(TempFolder::InMemory());
        const fs::path root = folder / "disk";
        fs::create_directory(root);
        files::WriteFileAtomically(root / "file", "old");
        RecordingDisk disk(root);
        int states = 0;
        const auto check = [&](const std::vector<Bytes>& expected) {
            disk.ForEachLoss(folder / "after", [&] {
                ++states;
                const Bytes found = BytesIn(folder / "after");
                EXPECT_NE(std::find(expected.begin(), expected.end(), found), expected.end())
                    << found.value_or("none") << " after call " << disk.calls;
            });
        };
        disk.afterEach = [&] { check(story.meanwhile); };
        story.work(root);
        check({story.afterwards});
        EXPECT_GT(states, 6);
    }
}

// Whichever system call fails, the file has its old or new content, no failure is reported as
// success, and no other file is left behind.
TEST(DiskFault, FilesAreWholeWhicheverCallFails) {
    for (const DiskStory& story : kDiskStories)
        for (int call = 1;; ++call) {
            SCOPED_TRACE(std::string(story.name) + ", call " + std::to_string(call));
            const TempFolder folder(TempFolder::InMemory());
            const fs::path root = folder / "disk";
            fs::create_directory(root);
            files::WriteFileAtomically(root / "file", "old");
            RecordingDisk disk(root);
            disk.failingCall = call;
            std::string refusal;
            try {
                story.work(root);
            } catch (const std::runtime_error& error) {
                refusal = error.what();
            }
            if (disk.calls < call) {
                EXPECT_EQ(refusal, "");
                EXPECT_GT(call, 2);
                break;
            }
            const Bytes found = BytesIn(root);
            if (refusal.empty()) {
                EXPECT_EQ(found, story.afterwards);
            } else {
                EXPECT_NE(refusal.find(root.string()), std::string::npos) << refusal;
                EXPECT_NE(std::find(story.meanwhile.begin(), story.meanwhile.end(), found),
                          story.meanwhile.end());
            }
            for (const auto& entry : fs::recursive_directory_iterator(root))
                EXPECT_EQ(entry.path().string().find(".new-"), std::string::npos) << entry.path();
        }
}

} // namespace qx::test
