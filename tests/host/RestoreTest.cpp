// Backups are restored to the keyboard they came from, as far as it can be identified.
#include "WriterFixture.h"

namespace qx::host {

namespace {

using RestoreTest = WriterFixture;

} // namespace

// Restoring a backup resolves the write that was interrupted in the keyboard; an interrupted
// restore leaves only what a recovery can clean up.
TEST_F(RestoreTest, ResolvesTheInterruptedWrite) {
    Interrupt(keyboard, 2);
    const std::string mixed = keyboard.memory;
    EXPECT_FALSE(Restore(keyboard, Entries().at(0).backup));
    EXPECT_TRUE(keyboard.memory == before);
    EXPECT_EQ(Entries().size(), 0U);

    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
        Reset();
        Interrupt(keyboard, 2);
        ASSERT_TRUE(keyboard.memory == mixed);
        keyboard.cutAfter = 1;
        EXPECT_TRUE(Restore(keyboard, Entries().at(0).backup));
        EXPECT_EQ(Entries().size(), 2U);
        EXPECT_TRUE(Recover(keyboard, way));
        EXPECT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? before : mixed));
        EXPECT_EQ(Recover(keyboard, way), way == Writer::Way::RollBack)
            << "half of the download was written";
        EXPECT_TRUE(keyboard.memory == before);
        EXPECT_EQ(Entries().size(), 0U);
    }

    // Another keyboard's interrupted write stays on record.
    Reset();
    Interrupt(keyboard, 2);
    TroubledKeyboard other = NewKeyboard(false, before);
    Interrupt(other, 2, kThird);
    ASSERT_EQ(Entries().size(), 2U);
    const std::string left = Entries()[1].Id();
    EXPECT_FALSE(Restore(keyboard, Entries()[0].backup));
    ASSERT_EQ(Entries().size(), 1U);
    EXPECT_EQ(Entries()[0].Id(), left);

    // A restore with nothing to do proves nothing if the keyboard may be a different one, but it
    // resolves the write of which the keyboard holds a part: the user confirms that content.
    Reset();
    Interrupt(keyboard, 2);
    const std::string backup = Entries().at(0).backup;
    TroubledKeyboard twin = NewKeyboard(false, before);
    EXPECT_FALSE(Restore(twin, backup));
    EXPECT_FALSE(outcome.isWritten);
    ASSERT_EQ(Entries().size(), 1U);
    EXPECT_TRUE(Recover(keyboard, Writer::Way::RollBack));
    const std::string ofMixed = WriteRecords(records).backups.List().back().id;
    Interrupt(keyboard, 2);
    ASSERT_TRUE(keyboard.memory == mixed);
    EXPECT_FALSE(Restore(keyboard, ofMixed));
    EXPECT_FALSE(outcome.isWritten);
    EXPECT_EQ(Entries().size(), 0U);

    // A restore that is not read back proves nothing.
    Reset();
    Interrupt(keyboard, 2);
    const JournalEntry interrupted = Entries().at(0);
    EXPECT_FALSE(Restore(keyboard, interrupted.backup, false, false));
    EXPECT_TRUE(outcome.isWritten);
    ASSERT_EQ(Entries().size(), 1U);
    EXPECT_EQ(Entries().at(0).Id(), interrupted.Id());
}

// A backup of an evidently different keyboard is restored only on request.
TEST_F(RestoreTest, ABackupIsRestoredToItsOwnKeyboard) {
    struct Story {
        const char* told;
        bool hasGuid;
        std::function<void(TroubledKeyboard&)> change;
        bool isOther;
    };
    const auto asTill2 = [&](TroubledKeyboard& driver) {
        till.unit = "till 2";
        ASSERT_FALSE(Download(driver, kThird));
    };
    const Story stories[] = {
        {"nothing", false, [](TroubledKeyboard&) {}, false},
        {"nothing, with a GUID", true, [](TroubledKeyboard&) {}, false},
        {"another GUID", true,
         [](TroubledKeyboard& driver) { driver.memory.replace(0x1500, 16, "fedcba9876543210"); },
         true},
        {"another place", false, [&](TroubledKeyboard&) { origin = "the second port"; }, true},
        {"another place, with a copied GUID", true,
         [&](TroubledKeyboard&) { origin = "the second port"; }, true},
        {"other contents by hand", false,
         [&](TroubledKeyboard& driver) {
             till = {};
             ASSERT_FALSE(Download(driver, kThird));
         },
         false},
        {"another unit", false, asTill2, true},
        {"another unit, with a copied GUID", true, asTill2, true},
        {"another unit, then other contents by hand", false,
         [&](TroubledKeyboard& driver) {
             asTill2(driver);
             till = {};
             ASSERT_FALSE(Download(driver, kNew));
             ASSERT_FALSE(Download(driver, {20, "[]"}));
         },
         true},
        {"another unit with the same contents", false,
         [&](TroubledKeyboard& driver) {
             driver.memory = before;
             till.unit = "till 2";
             ASSERT_FALSE(Download(driver, kNew));
         },
         true},
        {"contents of which there is no record", false,
         [](TroubledKeyboard& driver) { driver.memory[0x1000] ^= 0x40; }, true},
        {"the same, with a GUID", true,
         [](TroubledKeyboard& driver) { driver.memory[0x1000] ^= 0x40; }, false},
        {"contents of the backup", false, [&](TroubledKeyboard& driver) { driver.memory = before; },
         false},
        {"a recovered write of the unit", false,
         [&](TroubledKeyboard& driver) {
             driver.cutAfter = 2;
             ASSERT_TRUE(Download(driver, kThird));
             till = {};
             ASSERT_TRUE(Recover(driver, Writer::Way::Finish));
         },
         false},
        {"an interrupted write of another unit", false,
         [&](TroubledKeyboard& driver) {
             till.unit = "till 2";
             driver.cutAfter = 2;
             ASSERT_TRUE(Download(driver, kThird));
             driver.Replug();
         },
         true},
    };
    for (const Story& story : stories) {
        SCOPED_TRACE(story.told);
        Reset();
        till.unit = "till 1";
        origin = "the first port";
        TroubledKeyboard driver = NewKeyboard(story.hasGuid, before);
        ASSERT_FALSE(Download(driver, kNew));
        const std::string backup = outcome.backup;
        story.change(driver);
        till = {}; // a restore names no till
        const std::string guid = driver.memory.substr(0x1500, 16);
        const std::string held = driver.memory;
        const auto refused = Restore(driver, backup);
        EXPECT_EQ(refused.has_value(), story.isOther);
        if (refused) {
            EXPECT_EQ(refused->Kind(), ErrorKind::KeyboardChanged);
            EXPECT_EQ(refused->names.front(), "till 1");
            EXPECT_TRUE(driver.memory == held);
            EXPECT_FALSE(Restore(driver, backup, true));
        }
        EXPECT_TRUE(driver.memory.substr(0, 0x1500) == before.substr(0, 0x1500));
        EXPECT_EQ(driver.memory.substr(0x1500, 16), guid);
    }
    till = {};
    origin = "the first port";
    TroubledKeyboard otherKind{kWithGuid, "SMALL"};
    EXPECT_TRUE(Restore(otherKind, WriteRecords(records).backups.List().at(0).id, true));
}

// A backup without a newer area is restored as far as possible, and another keyboard keeps its own
// GUID.
TEST_F(RestoreTest, ABackupOfOtherAreasIsRestoredAsFarAsItGoes) {
    TroubledKeyboard first = NewKeyboard(true, before);
    ASSERT_FALSE(Download(first, kNew));
    BackupStore backups = WriteRecords(records).backups;
    Backup backup = backups.Load(backups.Find(outcome.backup));
    auto& pieces = backup.content.pieces;
    std::erase_if(pieces,
                  [](const ContentPiece& piece) { return piece.section == "commonKeyboard"; });
    for (ContentPiece& piece : pieces)
        if (piece.module == MODULE_MAGNET_HEADERS)
            piece.bytes.pop_back(); // never programmed
    pieces.push_back({MODULE_POS, "gone", 0x8000, "12345"});

    TroubledKeyboard other = NewKeyboard(true, after);
    other.memory.replace(0x1500, 16, "fedcba9876543210");
    std::string expected = before;
    expected.replace(0x1500, 16, "fedcba9876543210");
    expected[0x1000] = after[0x1000]; // the output delay, which is not in the backup
    std::vector<NotRestored> left;
    EXPECT_FALSE(Use(other, [&](Session&, Writer& writer) {
        EXPECT_THROW((void)writer.PlanRestore(backup), Error);
        const WritePlan plan = writer.PlanRestore(backup, true);
        EXPECT_TRUE(plan.otherKeyboard.has_value());
        left = plan.notRestored;
        Writer::Request request;
        request.action = WriteAction::Restore;
        writer.Write(plan, request);
    }));
    EXPECT_TRUE(other.memory == expected);
    ASSERT_EQ(left.size(), 3U);
    EXPECT_EQ(left[0].section, "commonKeyboard");
    EXPECT_EQ(left[1].section, "magnetCard");
    EXPECT_EQ(left[2].bytes, 5);
}

} // namespace qx::host
