// The guarantees of a write: only changes are sent, success is verified, nothing is written without
// records, and messages report the keyboard's contents.
#include "WriterFixture.h"

#include "files/Files.h"

namespace qx::host {

namespace {

using test::Lie;
using WriterTest = WriterFixture;

// A keyboard that runs an action while it is written to.
class Watched : public test::TroubledKeyboard {
public:
    using TroubledKeyboard::TroubledKeyboard;
    std::function<void()> whileWriting = [] {};
    std::function<void()> beforeReading = [] {};
    std::int32_t QXCFG_ImageSave() override {
        whileWriting();
        return TroubledKeyboard::QXCFG_ImageSave();
    }
    std::int32_t QXCFG_ImageLoad() override {
        beforeReading();
        return TroubledKeyboard::QXCFG_ImageLoad();
    }
};

} // namespace

TEST_F(WriterTest, SendsOnlyChangesAndVerifiesThem) {
    till = {"till 7", "line2.so"};
    Writer::Request request;
    request.document = "till.json";
    request.documentSha256 = "0123";
    EXPECT_FALSE(Download(keyboard, kNew, request));
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_TRUE(outcome.isWritten && outcome.isVerified);
    EXPECT_EQ(keyboard.bytesWritten, outcome.bytesSent);
    EXPECT_LT(outcome.bytesSent, 64);
    EXPECT_EQ(Count("journal"), 0U);
    const auto receipts = AllReceipts();
    ASSERT_EQ(receipts.size(), 1U);
    EXPECT_EQ(receipts[0].action, WriteAction::Download);
    EXPECT_EQ(receipts[0].document, "till.json");
    EXPECT_EQ(receipts[0].documentSha256, "0123");
    EXPECT_EQ(receipts[0].till.unit, "till 7");
    EXPECT_EQ(receipts[0].till.place, "line2.so");
    EXPECT_EQ(receipts[0].result, WriteResult::Verified);
    EXPECT_EQ(receipts[0].bytesSent, outcome.bytesSent);
    EXPECT_EQ(receipts[0].backup, outcome.backup);
    const BackupStore& backups = WriteRecords(records).backups;
    const Backup backup = backups.Load(backups.Find(outcome.backup));
    EXPECT_EQ(receipts[0].beforeSha256, backup.content.Hash());
    const Json receipt =
        Json::parse(files::ReadFile(RecordsIn(records / "receipts", ".json").at(0)));
    EXPECT_EQ(receipt["beforeSha256"], receipts[0].beforeSha256);
    EXPECT_FALSE(Use(keyboard, [&](Session& session, Writer& writer) {
        EXPECT_EQ(receipts[0].afterSha256, Plan(session, writer, kNew).before.Hash());
    }));
    EXPECT_EQ(backup.document, "till.json");
    EXPECT_EQ(backup.origin, origin);
    EXPECT_EQ(backup.till.unit, "till 7");
    EXPECT_EQ(backup.till.place, "line2.so");

    keyboard.bytesWritten = 0;
    EXPECT_FALSE(Download(keyboard, kNew));
    EXPECT_FALSE(outcome.isWritten);
    EXPECT_TRUE(outcome.isVerified) << "a second read has confirmed it";
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(AllReceipts().size(), 1U) << "nothing was written";

    request.full = true;
    request.verify = false;
    keyboard.memory = before;
    EXPECT_FALSE(Download(keyboard, kNew, request));
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_GT(keyboard.bytesWritten, 200);
    EXPECT_FALSE(outcome.isVerified);
    EXPECT_EQ(AllReceipts().back().result, WriteResult::NotVerified);
    EXPECT_TRUE(AllReceipts().back().full);
    EXPECT_EQ(Count("journal"), 0U) << "the user has skipped the verification";
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

// Another keyboard on the same cable, while the program stays open between plan and write.
TEST_F(WriterTest, AKeyboardThatIsSwappedUnderAnOpenSessionIsFoundOut) {
    const auto error = Use(keyboard, [&](Session& session, Writer& writer) {
        const WritePlan plan = Plan(session, writer, kNew);
        keyboard.memory.replace(0x7FC0, 5, "OTHER"); // all settings are equal
        writer.Write(plan, {});
    });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::KeyboardChanged);
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(Count("journal"), 0U);
}

TEST_F(WriterTest, AReadBackThatDiffersNamesTheSetting) {
    keyboard.lie = Lie::DropsWrite;
    const auto dropped = Download(keyboard, kNew);
    ASSERT_TRUE(dropped);
    EXPECT_EQ(dropped->Kind(), ErrorKind::ReadBackDiffers);
    EXPECT_EQ(dropped->holds, Holds::Old);
    EXPECT_EQ(dropped->place.pointer, "/commonKeyboard/outputDelay");
    EXPECT_EQ(dropped->place.address, 0x1000);
    EXPECT_EQ(ToText(dropped->setting), "Keyboard › Output delay");
    EXPECT_EQ(dropped->found, 6);
    EXPECT_EQ(dropped->expected, 9);
    EXPECT_EQ(AllReceipts().back().result, WriteResult::Differs);
}

TEST_F(WriterTest, AReadBackThatFailsKeepsTheReason) {
    Watched driver{kSmall, "SMALL"};
    driver.memory = before;
    bool isWritten = false;
    driver.whileWriting = [&] { isWritten = true; };
    driver.beforeReading = [&] {
        if (isWritten)
            driver.failingCall = driver.calls + 1;
    };
    const auto error = Download(driver, kNew);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Why(), Cause::ReadBackFailed);
    ASSERT_FALSE(error->related.empty());
    EXPECT_EQ(error->related[0].Why(), Cause::ReadingFailed);
    for (const Error& each : {*error, error->related[0]}) {
        ASSERT_TRUE(each.call);
        EXPECT_EQ(each.call->function, "QXCFG_ImageLoad");
    }
    EXPECT_NE(TextOf(*error).find(TextOf(error->related[0])), std::string::npos);
}

// The keyboard's contents after a failure, with a suggestion only where it helps.
TEST_F(WriterTest, AFailureShowsWhatTheKeyboardHolds) {
    Watched driver{kSmall, "SMALL"};
    struct Story {
        Holds holds;
        const char* result;
        Suggestion suggestion;
        std::function<void()> whileWriting;
    };
    const Story stories[] = {
        {Holds::Old, "nothing changed", Suggestion::None, [&] { driver.cutAfter = 0; }},
        {Holds::PartlyWritten, "partly written", Suggestion::Recover, [&] { driver.cutAfter = 2; }},
        {Holds::New, "written", Suggestion::None, [&] { driver.cutAfter = 1000; }},
        {Holds::Unknown, "unknown", Suggestion::Recover,
         [&] {
             driver.failingCall = driver.calls + 1;
             driver.failsForEver = true;
         }},
        {Holds::PartlyWritten, "differs", Suggestion::RestoreBackup,
         [&] {
             driver.lie = Lie::FlipsBit;
             driver.seed = 3;
         }},
    };
    for (const Story& story : stories) {
        SCOPED_TRACE(story.result);
        Reset();
        driver.Replug();
        driver.memory = before;
        driver.whileWriting = story.whileWriting;
        const auto error = Download(driver, kNew);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->holds, story.holds) << TextOf(*error);
        EXPECT_EQ(error->suggestion, story.suggestion) << TextOf(*error);
        EXPECT_EQ(TextOf(*error).find("qxconf"), std::string::npos) << "other programs show it";
        ASSERT_EQ(AllReceipts().size(), 1U);
        EXPECT_EQ(CodeOf(AllReceipts()[0].result), story.result);
        EXPECT_EQ(AllReceipts()[0].message, TextOf(*error));
        EXPECT_EQ(error->backup.empty(), story.suggestion != Suggestion::RestoreBackup);
        EXPECT_EQ(Count("journal"), 1U);
    }
}

// One failed read after a successful write.
TEST_F(WriterTest, AFailedVerificationIsNotReportedAsDone) {
    Watched driver{kSmall, "SMALL"};
    driver.memory = before;
    bool isWrong = false;
    driver.whileWriting = [&] { isWrong = true; };
    driver.beforeReading = [&] {
        driver.lie = std::exchange(isWrong, false) ? Lie::CutsRead : Lie::None;
    };
    const auto error = Download(driver, kNew);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::ReadBackDiffers);
    EXPECT_EQ(error->holds, Holds::New) << TextOf(*error);
    EXPECT_EQ(AllReceipts().back().result, WriteResult::Written);
}

TEST_F(WriterTest, WithoutItsRecordsNothingIsWritten) {
    for (const char* blocked : {"backups", "journal"}) {
        Reset();
        std::filesystem::create_directories(records);
        files::WriteFileAtomically(records / blocked, "in the way of the folder");
        const auto error = Download(keyboard, kNew);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::FileFailed);
        EXPECT_EQ(error->holds, Holds::NotTouched) << TextOf(*error);
        EXPECT_EQ(keyboard.bytesWritten, 0);
    }
}

// A verified write is reported as such, even if its records then fail.
TEST_F(WriterTest, AProvedWriteIsCalledSoWhenItsRecordsFail) {
    Watched driver{kSmall, "SMALL"};
    const auto blockReceipts = [&] {
        files::WriteFileAtomically(records / "receipts", "in the way of the folder");
    };
    const auto blockJournal = [&] { // a non-empty folder takes the entry's name
        const auto entry = Entries().at(0).file;
        std::filesystem::remove(entry);
        std::filesystem::create_directories(entry / "in the way");
    };
    const std::pair<std::function<void()>, std::vector<Cause>> stories[] = {
        {blockReceipts, {Cause::NoReceipt}},
        {blockJournal, {Cause::EntryNotEnded}},
        {[&] {
             blockReceipts();
             blockJournal();
         },
         {Cause::EntryNotEnded, Cause::NoReceipt}},
    };
    for (const auto& [block, causes] : stories) {
        Reset();
        driver.memory = before;
        driver.whileWriting = block;
        const auto error = Download(driver, kNew);
        ASSERT_TRUE(error);
        EXPECT_TRUE(driver.memory == after);
        EXPECT_EQ(error->Why(), Cause::NotRecorded);
        EXPECT_EQ(error->holds, Holds::New);
        std::vector<Cause> found;
        for (const Error& each : error->related) {
            found.push_back(each.Why());
            EXPECT_NE(TextOf(*error).find(TextOf(each)), std::string::npos) << TextOf(*error);
        }
        EXPECT_EQ(found, causes);
        if (std::filesystem::is_directory(records / "receipts")) {
            EXPECT_EQ(AllReceipts().size(), 1U);
        }
    }
}

// Before the first byte is sent, a stop cancels the write; afterwards the write is completed first.
TEST_F(WriterTest, AStopComesBeforeTheBytesOrAfterTheProof) {
    isStopped = true;
    const auto error = Download(keyboard, kNew);
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::Stopped);
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(Count("journal"), 0U);
    isStopped = false;

    Watched driver{kSmall, "SMALL"};
    driver.memory = before;
    driver.whileWriting = [&] { isStopped = true; };
    EXPECT_FALSE(Download(driver, kNew));
    EXPECT_TRUE(driver.memory == after);
    EXPECT_TRUE(outcome.isVerified);
    EXPECT_EQ(Count("journal"), 0U);
}

// The program's own exceptions, which are not Errors, end a write that has not begun like any
// other.
TEST_F(WriterTest, AnExceptionBeforeTheBytesLeavesNoRecordOfTheWrite) {
    Writer::Options options = Options();
    options.isStopped = [this]() -> bool {
        EXPECT_EQ(Count("journal"), 1U);
        throw std::bad_alloc();
    };
    Session session(keyboard);
    session.Open();
    Writer writer(session, options);
    EXPECT_THROW(writer.Write(Plan(session, writer, kNew), {}), std::bad_alloc);
    EXPECT_EQ(keyboard.bytesWritten, 0);
    EXPECT_EQ(Count("journal"), 0U);
}

// A read that does nothing but reports success yields zeros: even if zeros are wanted, "nothing to
// do" is not reported on that evidence alone.
TEST_F(WriterTest, NothingToDoIsProved) {
    Backup empty;
    empty.origin = origin;
    EXPECT_FALSE(Use(keyboard, [&](Session& session, Writer&) {
        Configuration configuration(Platform(), &layout, nullptr);
        empty.content = session.ReadContent(configuration);
    }));
    for (ContentPiece& piece : empty.content.pieces)
        piece.bytes.assign(piece.bytes.size(), '\0');
    keyboard.lie = Lie::CutsRead;
    const auto error =
        Use(keyboard, [&](Session&, Writer& writer) { (void)writer.PlanRestore(empty); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Kind(), ErrorKind::TransferFailed) << TextOf(*error);

    // A first read that shows everything that is wanted, and a second one that differs.
    Watched driver{kSmall, "SMALL"};
    bool isFirst = true;
    driver.beforeReading = [&] { driver.memory = std::exchange(isFirst, false) ? after : before; };
    const auto unproved =
        Use(driver, [&](Session& session, Writer& writer) { (void)Plan(session, writer, kNew); });
    ASSERT_TRUE(unproved);
    EXPECT_EQ(unproved->Kind(), ErrorKind::KeyboardChanged) << TextOf(*unproved);
}

// While one program writes, another does not mistake the write for an interrupted one and does not
// write itself; keyboards on other ports are independent.
TEST_F(WriterTest, OneProgramAtATimeWritesToAKeyboard) {
    Watched driver{kSmall, "SMALL"};
    driver.memory = before;
    TroubledKeyboard same{kSmall, "SMALL"}; // from the other program's point of view
    same.memory = before;
    TroubledKeyboard elsewhere{kSmall, "SMALL"};
    elsewhere.memory = before;
    int looks = 0;
    driver.whileWriting = [&] {
        ++looks;
        same.memory[0x1000] = after[0x1000]; // half-written by now
        EXPECT_FALSE(Use(same, [&](Session&, Writer& writer) {
            EXPECT_TRUE(writer.Interrupted().empty());
            const auto entries = writer.Records().journal.Entries();
            ASSERT_EQ(entries.size(), 1U);
            EXPECT_THROW(writer.Recover(entries[0], Writer::Way::RollBack), Error);
            EXPECT_THROW(writer.Records().Forget(entries[0]), Error);
        }));
        const auto error = Download(same, kNew);
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Kind(), ErrorKind::KeyboardBusy);
        EXPECT_EQ(std::string(CodeOf(error->Kind())), "keyboard-busy");
        EXPECT_EQ(same.bytesWritten, 0);
        origin = "the second port";
        EXPECT_FALSE(Download(elsewhere, kNew));
        origin = "the first port";
    };
    EXPECT_FALSE(Download(driver, kNew));
    EXPECT_EQ(looks, 1);
    EXPECT_TRUE(driver.memory == after);
    EXPECT_EQ(Count("journal"), 0U);
    EXPECT_FALSE(Download(same, kNew)) << "the claim must end with the write";
}

} // namespace qx::host
