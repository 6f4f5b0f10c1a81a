// A power failure at any moment of a write, and a disk on which any call fails: from the first byte
// sent until the verification, journal and backup are on the disk.
#include "WriterFixture.h"

#include "support/RecordingDisk.h"

#include <iostream>

namespace qx::host {

namespace {

class PowerCut : public WriterFixture {
protected:
    class Watched : public TroubledKeyboard {
    public:
        using TroubledKeyboard::TroubledKeyboard;
        std::function<void()> whileWriting = [] {};
        std::int32_t QXCFG_ImageSave() override {
            whileWriting();
            return TroubledKeyboard::QXCFG_ImageSave();
        }
    };

    // Checks the records after a power failure at this moment: none is half-written, and the number
    // of writes on record is within the limits.
    void CheckLosses(const test::RecordingDisk& disk, std::size_t least, std::size_t most) {
        disk.ForEachLoss(folder / "after", [&] {
            ++states;
            const WriteRecords left(folder / "after/data");
            std::vector<DamagedRecord> damaged;
            const auto entries = left.journal.Entries(&damaged);
            (void)left.receipts.List(&damaged);
            EXPECT_EQ(damaged.size(), 0U) << TextOf(damaged[0].error);
            EXPECT_GE(entries.size(), least);
            EXPECT_LE(entries.size(), most);
            for (const JournalEntry& entry : entries) {
                const Backup backup = left.backups.Load(left.backups.Find(entry.backup));
                EXPECT_EQ(backup.content.Bytes(0x1000, 1), before.substr(0x1000, 1));
                EXPECT_EQ(backup.content.Bytes(0x1300, 256), before.substr(0x1300, 256));
                EXPECT_EQ(entry.TraceIn(backup.content), Trace::Before);
            }
        });
    }

    int states = 0;
};

} // namespace

TEST_F(PowerCut, LeavesEverythingNeededForRecovery) {
    Watched driver{kSmall, "SMALL"};
    driver.memory = before;
    std::size_t least = 0; // number of writes on record
    std::size_t most = 1;
    std::filesystem::create_directories(records);
    test::RecordingDisk disk(folder / "");
    disk.afterEach = [&] {
        if (driver.memory == after && least == 1 && Entries().empty())
            least = 0; // verified; the record is being removed
        CheckLosses(disk, least, most);
    };
    driver.whileWriting = [&] {
        least = 1;
        CheckLosses(disk, least, most);
    };
    ASSERT_FALSE(Download(driver, kNew));
    CheckLosses(disk, 0, 0);
    disk.ForEachLoss(folder / "after", [&] {
        EXPECT_EQ(WriteRecords(folder / "after/data").receipts.List().size(), 1U);
    });
    std::cout << states << " states after a loss of power\n";
    EXPECT_GT(states, 100);
}

TEST_F(PowerCut, SurvivesADiskErrorAtAnyCall) {
    Watched driver{kSmall, "SMALL"};
    int runs = 0;
    for (int call = 1;; ++call) {
        SCOPED_TRACE("call " + std::to_string(call));
        Reset();
        std::filesystem::create_directories(records);
        driver.Replug();
        driver.memory = before;
        test::RecordingDisk disk(folder / "");
        disk.failingCall = call;
        bool isSent = false;
        driver.whileWriting = [&] {
            isSent = true;
            CheckLosses(disk, 1, 1);
        };
        const auto error = Download(driver, kNew);
        if (disk.calls < call) {
            EXPECT_FALSE(error);
            break;
        }
        ++runs;
        EXPECT_TRUE(driver.memory == (isSent ? after : before));
        if (error && isSent) {
            EXPECT_EQ(error->Why(), Cause::NotRecorded) << TextOf(*error);
            EXPECT_EQ(error->holds, Holds::New);
        } else if (error) {
            EXPECT_EQ(error->holds, Holds::NotTouched) << TextOf(*error);
            EXPECT_EQ(error->Kind(), ErrorKind::FileFailed);
        }
        EXPECT_TRUE(error || isSent);
        EXPECT_FALSE(Recover(driver, Writer::Way::RollBack)) << "no part was written";
    }
    std::cout << runs << " faults of the disk during a write\n";
    EXPECT_GT(runs, 25);
}

} // namespace qx::host
