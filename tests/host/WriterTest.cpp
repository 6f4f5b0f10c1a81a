// What a write promises, whatever goes wrong: what is called done is in the keyboard, what the
// keyboard held is not lost, and what was interrupted becomes exactly the old or exactly the new.
#include "host/Writer.h"

#include "files/Files.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/TempFolder.h"
#include "support/TroubledKeyboard.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <iostream>

namespace qx::host {

namespace {

using test::Lie;
using test::TroubledKeyboard;

const std::vector<test::FakeDriver::Entry> kSmall = {{MODULE_MAGNET_CONFIG, 0x1000},
                                                     {MODULE_MAGNET_HEADERS, 0x1300}};
const std::vector<test::FakeDriver::Entry> kWithGuid = {
    {MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1300}, {MODULE_GUID, 0x1500}};

// What the old and the new configuration have in the tests; the rest is alike.
struct Settings {
    Byte outputDelay;
    std::string header;
};
const Settings kOld = {6, R"("A")"};
const Settings kNew = {9, R"("1 2 3 4 5 6 7 8 9")"};

class WriterTest : public testing::Test {
protected:
    WriterTest() {
        layout.SetLayoutPath(QX_LAYOUTS);
        EXPECT_TRUE(layout.OpenLayoutByName("us.qxl"));
        Download(keyboard, kOld);
        before = keyboard.memory;
        Download(keyboard, kNew);
        after = keyboard.memory;
        EXPECT_NE(before, after);
        Reset();
    }

    void Reset() {
        keyboard.memory = before;
        keyboard.Replug();
        std::error_code ignored;
        std::filesystem::remove_all(records, ignored);
    }

    Writer::Options Options() {
        return {records,
                [this] { return std::make_unique<Configuration>(Platform(), &layout, nullptr); },
                [this] { return now += std::chrono::seconds(1); }, origin};
    }

    // What a program does on the opened keyboard; the error that it ends with.
    std::optional<Error> Use(TroubledKeyboard& driver,
                             const std::function<void(Session&, Writer&)>& work) {
        try {
            Session session(driver);
            session.Open();
            Writer writer(session, Options());
            work(session, writer);
            session.Close();
        } catch (const Error& error) {
            return error;
        }
        return std::nullopt;
    }

    // The plan of these settings, on the opened keyboard.
    WritePlan Plan(Session& session, Writer& writer, const Settings& settings) {
        Configuration configuration(Platform(), &layout, nullptr);
        (void)session.SectionsIn(configuration);
        return writer.Plan(configuration.Read(ConfigurationDocument::Parse(
            R"({"format": "qx-configuration", "version": 1, "commonKeyboard": {"outputDelay": )" +
                std::to_string(settings.outputDelay) + R"(}, "magnetCard": )" +
                Magnet(settings.header) + "}",
            "till.json")));
    }
    static std::string Magnet(const std::string& header) {
        std::string tracks;
        for (int track = 1; track <= 4; ++track)
            tracks += std::string(track == 1 ? "" : ", ") +
                      R"({"enabled": true, "headerEnabled": true, "header": )" +
                      (track == 2 ? header : "[]") +
                      R"(, "terminatorEnabled": true, "terminator": []})";
        return R"({"sendImmediate": true, "verifyLRC": true, "verifyLastChar": true, "tracks": [)" +
               tracks + "]}";
    }

    std::optional<Error> Download(TroubledKeyboard& driver, const Settings& settings,
                                  const Writer::Request& request = {}) {
        return Use(driver, [&](Session& session, Writer& writer) {
            outcome = {};
            outcome = writer.Write(Plan(session, writer, settings), request);
        });
    }

    // Recovers, after a restart, what is said to be interrupted; whether anything was.
    bool Recover(Writer::Way way) {
        keyboard.Replug();
        bool wasInterrupted = false;
        const auto error = Use(keyboard, [&](Session&, Writer& writer) {
            const auto entry = writer.Interrupted();
            wasInterrupted = entry.has_value();
            if (entry)
                writer.Recover(*entry, way);
        });
        EXPECT_FALSE(error) << error->what();
        return wasInterrupted;
    }

    [[nodiscard]] std::size_t Count(const std::string& folder) const {
        return RecordsIn(records / folder, ".json").size();
    }
    [[nodiscard]] std::vector<Receipt> AllReceipts() const {
        return WriteRecords(records).receipts.List();
    }

    // After a run that failed or not, and that `started` from this memory: nothing but old and new
    // bytes, never a wrong word about it, and recovering leads to one whole configuration.
    void CheckAfter(const std::optional<Error>& error, Writer::Way way,
                    const std::string& started) {
        if (!error) {
            ASSERT_TRUE(keyboard.memory == after) << "called done";
        }
        const std::string said = error ? error->what() : "";
        if (said.find("nothing was written") != std::string::npos ||
            said.find("nothing changed") != std::string::npos) {
            ASSERT_TRUE(keyboard.memory == started) << said;
        }
        const bool isWhole = keyboard.memory == before || keyboard.memory == after;
        const bool wasInterrupted = Recover(way);
        ASSERT_TRUE(wasInterrupted || isWhole) << said;
        if (wasInterrupted) {
            ASSERT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? after : before)) << said;
        }
        ASSERT_EQ(Count("journal"), 0U);
    }

    test::TempFolder folder{test::TempFolder::InMemory()};
    std::filesystem::path records = folder / "data";
    Time now = Time(std::chrono::hours(24 * 365 * 56));
    QXKeyboardLayoutData layout;
    std::string origin = "the first port";
    TroubledKeyboard keyboard{kSmall, "SMALL"};
    std::string before;
    std::string after;
    Writer::Outcome outcome;
};

} // namespace

TEST_F(WriterTest, SendsWhatChangesAndProvesIt) {
    EXPECT_FALSE(Download(keyboard, kNew));
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_TRUE(outcome.isWritten && outcome.isVerified);
    EXPECT_EQ(keyboard.bytesWritten, outcome.bytesSent);
    EXPECT_LT(outcome.bytesSent, 64);
    EXPECT_EQ(Count("journal"), 0U);
    EXPECT_EQ(Count("backups/" + RecordsIn(records / "backups", "")[0].filename().string()), 2U);
    const auto receipts = AllReceipts();
    ASSERT_EQ(receipts.size(), 1U);
    EXPECT_EQ(receipts[0].result, "verified");
    EXPECT_EQ(receipts[0].bytesSent, outcome.bytesSent);
    EXPECT_NE(receipts[0].beforeSha256, receipts[0].afterSha256);

    keyboard.bytesWritten = 0;
    EXPECT_FALSE(Download(keyboard, kNew));
    EXPECT_FALSE(outcome.isWritten);
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(AllReceipts().size(), 1U) << "nothing was written";

    Writer::Request full;
    full.full = true;
    full.verify = false;
    EXPECT_FALSE(Download(keyboard, kNew, full));
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_GT(keyboard.bytesWritten, 200);
    EXPECT_FALSE(outcome.isVerified);
    EXPECT_EQ(AllReceipts().back().result, "not verified");
}

TEST_F(WriterTest, AnotherKeyboardThanThePlannedOneIsRefused) {
    TroubledKeyboard sameKind{kSmall, "SMALL"};
    sameKind.memory = before;
    sameKind.memory[0x1000] = '\x33';
    TroubledKeyboard otherKind{kSmall, "LARGE"};
    TroubledKeyboard withMore{kWithGuid, "SMALL"};
    withMore.memory = before;
    WritePlan plan;
    EXPECT_FALSE(Use(
        keyboard, [&](Session& session, Writer& writer) { plan = Plan(session, writer, kNew); }));
    for (TroubledKeyboard* other : {&sameKind, &otherKind, &withMore}) {
        const std::string memory = other->memory;
        const auto error = Use(*other, [&](Session&, Writer& writer) { writer.Write(plan, {}); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::KeyboardChanged);
        EXPECT_TRUE(other->memory == memory);
        EXPECT_EQ(Count("journal"), 0U);
    }
}

TEST_F(WriterTest, AReadBackThatDiffersNamesTheSetting) {
    keyboard.lie = Lie::DropsWrite;
    const auto dropped = Download(keyboard, kNew);
    ASSERT_TRUE(dropped);
    EXPECT_EQ(dropped->Kind(), ErrorKind::ReadBackDiffers);
    const std::string said = dropped->what();
    EXPECT_NE(said.find("keyboard output delay: address 1000 holds 6 in place of 9 (hexadecimal)"),
              std::string::npos)
        << said;
    EXPECT_NE(said.find("nothing changed"), std::string::npos) << said;
    ASSERT_EQ(dropped->Faults().size(), 1U);
    EXPECT_EQ(dropped->Faults()[0].place, "/commonKeyboard/outputDelay");
    EXPECT_EQ(AllReceipts().back().result, "differs");
}

// Whatever a keyboard does while it reports success, over many places: it is never called done.
TEST_F(WriterTest, NoLieIsBelieved) {
    constexpr std::uint32_t kSeeds = 250; // of each lie
    int lies = 0;
    int found = 0;
    for (const Lie lie : {Lie::DropsWrite, Lie::CutsWrite, Lie::FlipsBit, Lie::CutsRead})
        for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
            SCOPED_TRACE("lie " + std::to_string(static_cast<int>(lie)) + " seed " +
                         std::to_string(seed));
            Reset();
            keyboard.lie = lie;
            keyboard.seed = seed;
            const auto error = Download(keyboard, kNew);
            ++lies;
            found += error ? 1 : 0;
            keyboard.lie = Lie::None;
            ASSERT_TRUE(error);
            if (lie != Lie::FlipsBit) { // a flipped bit is neither old nor new
                CheckAfter(error, Writer::Way::RollBack, before);
            }
        }
    std::cout << found << " of " << lies << " lies found\n";
    EXPECT_EQ(found, lies);
}

TEST_F(WriterTest, AFaultAtEveryDriverCall) {
    int runs = 0;
    for (const bool forEver : {false, true})
        for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack})
            for (int call = 1;; ++call) {
                SCOPED_TRACE("call " + std::to_string(call) + (forEver ? " for ever" : " once"));
                Reset();
                keyboard.failingCall = call;
                keyboard.failsForEver = forEver;
                const auto error = Download(keyboard, kNew);
                const bool isReached = keyboard.calls >= call;
                if (!isReached)
                    break;
                ++runs;
                CheckAfter(error, way, before);
                ASSERT_FALSE(HasFatalFailure());
            }
    std::cout << runs << " faults of driver calls during a write\n";
    EXPECT_GT(runs, 100);
}

TEST_F(WriterTest, AFaultAtEveryDriverCallOfTheRecovery) {
    int runs = 0;
    for (const bool forEver : {false, true})
        for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack})
            for (int call = 1;; ++call) {
                SCOPED_TRACE("call " + std::to_string(call) + (forEver ? " for ever" : " once"));
                Reset();
                keyboard.cutAfter = 2;
                ASSERT_TRUE(Download(keyboard, kNew));
                ASSERT_TRUE(keyboard.memory != before && keyboard.memory != after);
                keyboard.Replug();
                keyboard.failingCall = call;
                keyboard.failsForEver = forEver;
                const auto error = Use(keyboard, [&](Session&, Writer& writer) {
                    if (const auto entry = writer.Interrupted())
                        writer.Recover(*entry, way);
                    else
                        FAIL() << "forgotten";
                });
                if (keyboard.calls < call)
                    break;
                ++runs;
                if (!error) {
                    ASSERT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? after : before));
                }
                const bool isDone = Count("journal") == 0;
                Recover(way);
                ASSERT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? after : before))
                    << isDone;
            }
    std::cout << runs << " faults of driver calls during a recovery\n";
    EXPECT_GT(runs, 100);
}

TEST_F(WriterTest, WithoutItsRecordsNothingIsWritten) {
    for (const char* blocked : {"backups", "journal"}) {
        Reset();
        std::filesystem::create_directories(records);
        files::WriteFileAtomically(records / blocked, "in the way of the folder");
        const auto error = Download(keyboard, kNew);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::FileFailed);
        EXPECT_NE(std::string(error->what()).find("nothing was written"), std::string::npos);
        EXPECT_EQ(keyboard.bytesWritten, 0);
    }
    Reset();
    std::filesystem::create_directories(records);
    files::WriteFileAtomically(records / "receipts", "in the way of the folder");
    const auto error = Download(keyboard, kNew);
    ASSERT_TRUE(error);
    EXPECT_NE(std::string(error->what()).find("written and verified"), std::string::npos);
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_EQ(Count("journal"), 0U);
}

// An interrupted write is its own keyboard's affair, which is known again by its GUID or by how it
// is reached.
TEST_F(WriterTest, AnInterruptedWriteBelongsToItsKeyboard) {
    keyboard.cutAfter = 2;
    ASSERT_TRUE(Download(keyboard, kNew));
    keyboard.Replug();
    const auto refused = Download(keyboard, kNew);
    ASSERT_TRUE(refused);
    EXPECT_EQ(refused->Kind(), ErrorKind::WriteInterrupted);
    EXPECT_EQ(keyboard.bytesWritten, 0);

    TroubledKeyboard twin{kSmall, "SMALL"}; // it holds just what the other one held
    twin.memory = before;
    origin = "the second port";
    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack})
        EXPECT_FALSE(Use(twin, [&](Session&, Writer& writer) {
            EXPECT_FALSE(writer.Interrupted());
            const auto entries = writer.Records().journal.Entries();
            ASSERT_EQ(entries.size(), 1U);
            EXPECT_THROW(writer.Recover(entries[0], way), Error);
        }));
    EXPECT_EQ(twin.bytesWritten, 0);
    EXPECT_FALSE(Download(twin, kNew));
    EXPECT_EQ(Count("journal"), 1U);
    origin = "the first port";
    EXPECT_TRUE(Recover(Writer::Way::Finish));
    EXPECT_TRUE(keyboard.memory == after);
}

// What no interruption can have left is neither finished nor rolled back: not in another keyboard
// to which the GUID was copied, and not where a byte beside the ranges, or in them, is a third one.
TEST_F(WriterTest, WhatTheInterruptedWriteDoesNotExplainIsLeftToTheUser) {
    const std::string guid = "0123456789ABCDEF";
    for (const bool hasGuid : {true, false})
        for (const std::size_t changed : {0x1310U, 0x1000U})
            for (const bool restores : {true, false}) {
                SCOPED_TRACE(std::to_string(hasGuid) + " " + std::to_string(changed));
                Reset();
                TroubledKeyboard driver{hasGuid ? kWithGuid : kSmall, "SMALL"};
                driver.memory = before;
                if (hasGuid)
                    driver.memory.replace(0x1500, 16, guid);
                const std::string held = driver.memory;
                driver.cutAfter = 2;
                ASSERT_TRUE(Download(driver, kNew));
                driver.Replug();
                driver.memory[changed] = '\x33';
                const std::string found = driver.memory;
                const auto refused = Download(driver, kNew);
                ASSERT_TRUE(refused);
                EXPECT_EQ(refused->Kind(), ErrorKind::WriteInterrupted);
                const std::string said = refused->what();
                std::string backup;
                EXPECT_FALSE(Use(driver, [&](Session& session, Writer& writer) {
                    const auto entry = writer.Interrupted();
                    ASSERT_TRUE(entry);
                    EXPECT_FALSE(entry->isRecoverable);
                    backup = entry->backup;
                    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack})
                        EXPECT_THROW(writer.Recover(*entry, way), Error);
                    EXPECT_TRUE(driver.memory == found);
                    if (!restores)
                        return writer.Forget(*entry);
                    const BackupStore& backups = writer.Records().backups;
                    Writer::Request request;
                    request.action = "restore";
                    writer.Write(writer.PlanRestore(backups.Load(backups.Find(backup))), request);
                    (void)session;
                }));
                EXPECT_NE(said.find("qxconf backup restore " + backup), std::string::npos) << said;
                EXPECT_TRUE(driver.memory == (restores ? held : found));
                EXPECT_EQ(Count("journal"), 0U);
            }
}

// A restore that has nothing to do settles what was interrupted, and one that is interrupted itself
// leaves no more behind than a recovery ends.
TEST_F(WriterTest, ARestoreSettlesWhatWasInterrupted) {
    const auto restore = [&](const std::string& id) {
        return Use(keyboard, [&](Session&, Writer& writer) {
            const BackupStore& backups = writer.Records().backups;
            Writer::Request request;
            request.action = "restore";
            outcome = writer.Write(writer.PlanRestore(backups.Load(backups.Find(id))), request);
        });
    };
    const auto interrupt = [&] {
        Reset();
        keyboard.cutAfter = 2;
        EXPECT_TRUE(Download(keyboard, kNew));
        keyboard.Replug();
        return WriteRecords(records).journal.Entries().at(0).backup;
    };
    const std::string saved = interrupt();
    const std::string mixed = keyboard.memory;
    keyboard.memory = before;
    EXPECT_FALSE(restore(saved));
    EXPECT_FALSE(outcome.isWritten);
    EXPECT_EQ(Count("journal"), 0U);

    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
        const std::string again = interrupt();
        ASSERT_TRUE(keyboard.memory == mixed);
        keyboard.cutAfter = 1;
        EXPECT_TRUE(restore(again));
        EXPECT_EQ(Count("journal"), 2U);
        EXPECT_TRUE(Recover(way));
        EXPECT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? before : mixed));
        EXPECT_EQ(Recover(way), way == Writer::Way::RollBack) << "half of the download is there";
        EXPECT_TRUE(keyboard.memory == before);
        EXPECT_EQ(Count("journal"), 0U);
    }
}

TEST_F(WriterTest, ARecoverySavesWhatItReplaces) {
    keyboard.cutAfter = 2;
    ASSERT_TRUE(Download(keyboard, kNew));
    const std::string mixed = keyboard.memory;
    ASSERT_TRUE(Recover(Writer::Way::RollBack));
    const BackupStore& backups = WriteRecords(records).backups;
    const auto saved = backups.List();
    ASSERT_EQ(saved.size(), 2U);
    for (const ContentPiece& piece : backups.Load(saved[1]).pieces)
        EXPECT_EQ(piece.bytes,
                  mixed.substr(static_cast<std::size_t>(piece.address), piece.bytes.size()));
    EXPECT_EQ(AllReceipts().back().backup, saved[1].id);
}

// A reading that does nothing and reports success shows zeros: where zeros are wanted, too, it is
// not believed that there is nothing to do.
TEST_F(WriterTest, NothingToDoIsProved) {
    KeyboardContent empty;
    EXPECT_FALSE(Use(keyboard, [&](Session& session, Writer&) {
        Configuration configuration(Platform(), &layout, nullptr);
        empty = session.ReadContent(configuration);
    }));
    for (ContentPiece& piece : empty.pieces)
        piece.bytes.assign(piece.bytes.size(), '\0');
    keyboard.lie = Lie::CutsRead;
    const auto error =
        Use(keyboard, [&](Session&, Writer& writer) { (void)writer.PlanRestore(empty); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::KeyboardChanged);
}

// Another keyboard at the same cable, while the program stays open between plan and write.
TEST_F(WriterTest, AKeyboardThatIsSwappedUnderAnOpenSessionIsFoundOut) {
    const auto error = Use(keyboard, [&](Session& session, Writer& writer) {
        const WritePlan plan = Plan(session, writer, kNew);
        keyboard.memory.replace(0x7FC0, 5, "OTHER"); // all settings are alike
        writer.Write(plan, {});
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::KeyboardChanged);
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(Count("journal"), 0U);
}

// While one program writes, another one neither takes the write for interrupted nor writes itself.
TEST_F(WriterTest, OneProgramAtATimeWritesToAKeyboard) {
    class Watched : public TroubledKeyboard {
    public:
        using TroubledKeyboard::TroubledKeyboard;
        std::function<void()> whileWriting;
        std::int32_t QXCFG_ImageSave() override {
            if (whileWriting)
                whileWriting();
            return TroubledKeyboard::QXCFG_ImageSave();
        }
    } driver{kSmall, "SMALL"};
    driver.memory = before;
    TroubledKeyboard same{kSmall, "SMALL"}; // as the other program sees it
    same.memory = before;
    int looks = 0;
    driver.whileWriting = [&] {
        ++looks;
        EXPECT_FALSE(Use(same, [&](Session&, Writer& writer) {
            EXPECT_FALSE(writer.Interrupted());
            const auto entries = writer.Records().journal.Entries();
            ASSERT_EQ(entries.size(), 1U);
            EXPECT_THROW(writer.Recover(entries[0], Writer::Way::RollBack), Error);
        }));
        const auto error = Download(same, kNew);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::KeyboardBusy);
        EXPECT_EQ(same.bytesWritten, 0);
    };
    EXPECT_FALSE(Download(driver, kNew));
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(driver.memory == after);
    EXPECT_EQ(Count("journal"), 0U);
    EXPECT_FALSE(Download(same, kNew)) << "the claim has ended with the write";
}

TEST_F(WriterTest, ABackupBringsEverythingBack) {
    ASSERT_FALSE(Download(keyboard, kNew));
    const std::string first = outcome.backup;
    keyboard.cutAfter = 3;
    ASSERT_TRUE(Download(keyboard, kOld));
    EXPECT_FALSE(Use(keyboard, [&](Session&, Writer& writer) {
        const BackupStore& backups = writer.Records().backups;
        const auto plan = writer.PlanRestore(backups.Load(backups.Find(first)));
        Writer::Request request;
        request.action = "restore";
        outcome = writer.Write(plan, request);
    }));
    EXPECT_TRUE(keyboard.memory == before);
    EXPECT_EQ(Count("journal"), 0U) << "what was interrupted has been replaced";

    TroubledKeyboard other{kWithGuid, "SMALL"};
    const auto error = Use(other, [&](Session&, Writer& writer) {
        const BackupStore& backups = writer.Records().backups;
        (void)writer.PlanRestore(backups.Load(backups.Find(first)));
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::KeyboardChanged);
}

// A backup of before a new area was known is restored as far as it goes, and another keyboard keeps
// its own GUID.
TEST_F(WriterTest, ABackupOfOtherAreasOrAnotherKeyboardIsRestoredAsFarAsItGoes) {
    TroubledKeyboard first{kWithGuid, "SMALL"};
    first.memory = before;
    first.memory.replace(0x1500, 16, "0123456789ABCDEF");
    ASSERT_FALSE(Download(first, kNew));
    BackupStore backups = WriteRecords(records).backups;
    KeyboardContent backup = backups.Load(backups.Find(outcome.backup));
    std::erase_if(backup.pieces,
                  [](const ContentPiece& piece) { return piece.section == "commonKeyboard"; });
    backup.pieces.push_back({MODULE_POS, "gone", 0x8000, "12345"});

    TroubledKeyboard other{kWithGuid, "SMALL"};
    other.memory = after;
    other.memory.replace(0x1500, 16, "fedcba9876543210");
    std::string expected = before;
    expected.replace(0x1500, 16, "fedcba9876543210");
    expected[0x1000] = after[0x1000]; // the output delay, which the backup lacks
    std::vector<std::string> told;
    EXPECT_FALSE(Use(other, [&](Session&, Writer& writer) {
        EXPECT_THROW((void)writer.PlanRestore(backup), Error);
        const WritePlan plan = writer.PlanRestore(backup, true);
        told = plan.notRestored;
        Writer::Request request;
        request.action = "restore";
        writer.Write(plan, request);
    }));
    EXPECT_TRUE(other.memory == expected);
    ASSERT_EQ(told.size(), 2U);
    EXPECT_NE(told[0].find("commonKeyboard"), std::string::npos);
    EXPECT_NE(told[1].find("5 bytes"), std::string::npos);
}

// One reading that goes wrong after a good write, and a journal that cannot be ended, leave the
// first failure to be seen.
TEST_F(WriterTest, AFailureIsToldAsItIs) {
    class ReadsOnceWrong : public TroubledKeyboard {
    public:
        using TroubledKeyboard::TroubledKeyboard;
        std::function<void()> whileWriting = [] {};
        bool isWrong = false;
        std::int32_t QXCFG_ImageSave() override {
            whileWriting();
            isWrong = true;
            return TroubledKeyboard::QXCFG_ImageSave();
        }
        std::int32_t QXCFG_ImageLoad() override {
            lie = std::exchange(isWrong, false) ? Lie::CutsRead : Lie::None;
            return TroubledKeyboard::QXCFG_ImageLoad();
        }
    } driver{kSmall, "SMALL"};
    driver.memory = before;
    const auto error = Download(driver, kNew);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::ReadBackDiffers);
    EXPECT_NE(std::string(error->what()).find("it holds all that was to be written"),
              std::string::npos)
        << error->what();
    EXPECT_EQ(Count("journal"), 0U);
    EXPECT_EQ(AllReceipts().back().result, "written");

    driver.memory = before;
    driver.whileWriting = [&] { // a folder that is not empty in the place of the entry
        const auto entry = WriteRecords(records).journal.Entries().at(0).file;
        std::filesystem::remove(entry);
        std::filesystem::create_directories(entry / "in the way");
    };
    const auto both = Download(driver, kNew);
    ASSERT_TRUE(both);
    EXPECT_EQ(both->Kind(), ErrorKind::ReadBackDiffers);
    EXPECT_NE(std::string(both->what()).find("cannot be removed"), std::string::npos)
        << both->what();
}

TEST_F(WriterTest, RecordsOfManyProgramsAtTheSameTimeAreAllKept) {
    constexpr int kPrograms = 4;
    constexpr std::size_t kEach = 100;
    std::vector<pid_t> programs;
    for (int i = 0; i < kPrograms; ++i) {
        const pid_t program = fork();
        if (program == 0) {
            const Receipts receipts(records);
            for (std::size_t n = 0; n < kEach; ++n)
                receipts.Add({}, now);
            _exit(0);
        }
        programs.push_back(program);
    }
    for (const pid_t program : programs)
        waitpid(program, nullptr, 0);
    EXPECT_EQ(Receipts(records).List().size(), kPrograms * kEach);
    EXPECT_TRUE(files::WriteNewFile(records / "new", "first"));
    EXPECT_FALSE(files::WriteNewFile(records / "new", "second"));
    EXPECT_EQ(files::ReadFile(records / "new"), "first");
}

// A damaged entry keeps its own keyboard from being written to, and no other; a damaged receipt
// keeps nothing from anything.
TEST_F(WriterTest, ADamagedRecordIsNamedAndKeepsNoOtherKeyboardBack) {
    keyboard.cutAfter = 2;
    ASSERT_TRUE(Download(keyboard, kNew));
    keyboard.Replug();
    const auto entry = WriteRecords(records).journal.Entries().at(0).file;
    const std::string text = files::ReadFile(entry);
    const auto receipt = RecordsIn(records / "receipts", ".json").at(0);
    files::WriteFileAtomically(receipt, files::ReadFile(receipt).substr(1));
    const auto to = text.find(R"("to": ")") + 7;
    const std::pair<std::size_t, std::string> damages[] = {
        {to, text[to] == '0' ? "1" : "0"}, // it would be written, and proved
        {text.find("4096"), "4099"},
        {text.size() / 2, std::string(1, '\0')},
        {text.find("capabilities") + 15, "8"},
    };
    for (const auto& [at, damage] : damages) {
        SCOPED_TRACE(damage + " for " + text.substr(at, 20));
        std::string damaged = text;
        files::WriteFileAtomically(entry, damaged.replace(at, damage.size(), damage));
        const auto refused = Download(keyboard, kNew);
        ASSERT_TRUE(refused) << at;
        EXPECT_EQ(refused->Kind(), ErrorKind::FileFailed);
        EXPECT_NE(std::string(refused->what()).find(entry.string()), std::string::npos);
        EXPECT_EQ(keyboard.bytesWritten, 0);

        TroubledKeyboard other{kWithGuid, "SMALL"};
        other.memory = before;
        EXPECT_FALSE(Download(other, kNew));
    }
    std::vector<DamagedRecord> damaged;
    const auto receipts = WriteRecords(records).receipts.List(&damaged);
    EXPECT_EQ(receipts.size(), std::size(damages)) << "of the other keyboard";
    ASSERT_EQ(damaged.size(), 1U);
    EXPECT_EQ(damaged[0].file, receipt);

    files::WriteFileAtomically(entry, text);
    EXPECT_TRUE(Recover(Writer::Way::RollBack));
    EXPECT_TRUE(keyboard.memory == before);
}

TEST_F(WriterTest, TheNewestBackupsAreKept) {
    KeyboardContent content;
    content.identity.identification = "SMALL";
    content.pieces = {{MODULE_POS, "pos", 0x1000, "bytes"}};
    BackupStore store(records);
    std::string needed;
    std::string last;
    for (std::size_t i = 0; i < BackupStore::kKept + 5; ++i) {
        last = store.Save(content, {}, now + std::chrono::minutes(i), {needed});
        needed = i == 1 ? last : needed;
    }
    const auto entries = store.List();
    ASSERT_EQ(entries.size(), BackupStore::kKept + 1);
    EXPECT_EQ(entries.front().id, needed);
    EXPECT_EQ(entries.back().id, last);
    EXPECT_TRUE(store.Load(entries.back()).HoldsSame(content));
    EXPECT_EQ(RecordsIn(records / entries.back().keyboard, "").size(), 2 * entries.size());

    // What killed programs have left is removed, but not what another one may be writing.
    const auto place = records / entries.back().keyboard;
    files::WriteFileAtomically(place / "20260101T000000.000Z-1-1.json", "of no backup");
    for (const char* name : {"old.json.new-1-0", "young.json.new-2-0"})
        files::WriteFileAtomically(place / name, "half");
    std::filesystem::last_write_time(place / "old.json.new-1-0",
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours(25));
    last = store.Save(content, {}, now + std::chrono::minutes(99), {needed});
    EXPECT_EQ(RecordsIn(place, ".json").size(), 2 * entries.size());
    EXPECT_FALSE(std::filesystem::exists(place / "old.json.new-1-0"));
    EXPECT_TRUE(std::filesystem::exists(place / "young.json.new-2-0"));

    const auto areas = records / (last + ".areas.json");
    std::string text = files::ReadFile(areas);
    text.replace(text.find("6279746573"), 2, "00"); // "bytes"
    files::WriteFileAtomically(areas, text);
    EXPECT_THROW((void)store.Load(store.Find(last)), Error);
}

// The first version of the format, as it is on users' disks.
TEST_F(WriterTest, BackupsOfEveryVersionLoad) {
    std::filesystem::create_directories(records / "SMALL-0123");
    files::WriteFileAtomically(records / "SMALL-0123/20260131T090507.123Z.areas.json", R"({
  "format": "qx-backup", "version": 1, "time": "2026-01-31T09:05:07.123Z",
  "keyboard": { "name": "SMALL", "identification": "534d414c4c", "capabilities": 128,
                "guid": "", "directory": [{"module": 1, "address": 4096}] },
  "sha256": "b8fca4bf5deecd34920620b43e2e25a728343d6efb57247421245ffd7e83005d",
  "areas": [{"module": 0, "section": "commonKeyboard", "address": 4096, "bytes": "06ff"}]
})");
    BackupStore store(records);
    const KeyboardContent content = store.Load(store.Find("SMALL-0123/20260131T090507.123Z"));
    EXPECT_EQ(content.Bytes(4096, 2), "\x06\xFF");
    EXPECT_EQ(content.identity.Name(), "SMALL");
}

TEST_F(WriterTest, JournalEntriesAndReceiptsOfEveryVersionLoad) {
    const std::string keyboardJson =
        R"("keyboard": { "name": "SMALL", "identification": "534d414c4c",
        "capabilities": 128, "guid": "", "directory": [{"module": 1, "address": 4096}] })";
    std::filesystem::create_directories(records / "journal");
    std::filesystem::create_directories(records / "receipts");
    files::WriteFileAtomically(
        records / "journal/20260131T090507.123Z.journal.json",
        R"({"format": "qx-journal", "version": 1, "time": "2026-01-31T09:05:07.123Z",
            "action": "download", "document": "till.json", "backup": "SMALL-0123/1", )" +
            keyboardJson + R"(, "rest": "0123", "ranges":
            [{"module": 0, "section": "pos", "address": 4096, "from": "06", "to": "09"}]})");
    files::WriteFileAtomically(
        records / "receipts/20260131T090507.123Z.receipt.json",
        R"({"format": "qx-receipt", "version": 1, "time": "2026-01-31T09:05:07.123Z",
            "action": "download", "result": "verified", "message": "", "document": "till.json",
            "documentSha256": "", "full": false, "bytesSent": 1, "beforeSha256": "",
            "afterSha256": "", "backup": "SMALL-0123/1", )" +
            keyboardJson + "}");
    const auto entries = WriteRecords(records).journal.Entries();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].ranges.at(0).to, "\x09");
    EXPECT_FALSE(entries[0].origin);
    const auto receipts = AllReceipts();
    ASSERT_EQ(receipts.size(), 1U);
    EXPECT_EQ(receipts[0].bytesSent, 1);
}

// A cable pulled after every byte of a write, and again after every byte of the recovery.
TEST_F(WriterTest, ACutAfterEveryByteAndASecondOneWhileRecovering) {
    int cuts = 0;
    int secondCuts = 0;
    const auto size = [&] {
        EXPECT_FALSE(Download(keyboard, kNew));
        return outcome.bytesSent;
    }();
    for (const Writer::Way first : {Writer::Way::Finish, Writer::Way::RollBack})
        for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack})
            for (Long cut = 0; cut <= size; ++cut)
                for (Long second = 0; second <= size; ++second) {
                    SCOPED_TRACE("cuts after " + std::to_string(cut) + " and " +
                                 std::to_string(second) + " bytes");
                    Reset();
                    keyboard.cutAfter = cut;
                    const auto error = Download(keyboard, kNew);
                    ASSERT_TRUE(error);
                    ++cuts;
                    keyboard.Replug();
                    const std::string started = keyboard.memory;
                    const auto again = Use(keyboard, [&](Session&, Writer& writer) {
                        keyboard.cutAfter = second;
                        if (const auto entry = writer.Interrupted())
                            writer.Recover(*entry, first);
                    });
                    secondCuts += again ? 1 : 0;
                    if (!again) {
                        ASSERT_TRUE(keyboard.memory == before || keyboard.memory == after);
                    }
                    CheckAfter(again ? again : error, way, again ? started : before);
                    ASSERT_FALSE(HasFatalFailure());
                    if (!again)
                        break; // the recovery is shorter than that
                }
    std::cout << cuts << " cuts of a write of " << size << " bytes, " << secondCuts
              << " second cuts\n";
    EXPECT_GT(secondCuts, cuts / 2);
}

} // namespace qx::host
