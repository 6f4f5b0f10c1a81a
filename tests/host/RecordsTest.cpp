// Backups, journal entries and receipts: each is kept as long as somebody may need it, is the
// user's own, and is refused when it is not as it was written.
#include "WriterFixture.h"

#include "files/Files.h"
#include "files/Sha256.h"

#include <fstream>
#ifndef _WIN32
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace qx::host {

namespace {

using RecordsTest = WriterFixture;
using std::chrono::hours;
using std::chrono::minutes;

BackupStore::Named NothingNamed() {
    return {};
}

class Backups : public WriterFixture {
protected:
    Backups() {
        backup.content.identity.identification = "SMALL";
        backup.content.pieces = {{MODULE_POS, "pos", 0x1000, "bytes"}};
    }
    std::string Save(Time time) { return store.Save(backup, {}, time, named); }
    [[nodiscard]] bool IsKept(const std::string& id) const {
        const auto all = store.List();
        return std::any_of(all.begin(), all.end(),
                           [&](const BackupEntry& entry) { return entry.id == id; });
    }

    Backup backup;
    BackupStore store{records};
    BackupStore::AskNamed named = NothingNamed;
};

} // namespace

// Neither many tills in one day nor a few days with a clock far ahead remove a backup of the last
// 90 real days.
TEST_F(Backups, StayForTheirNumberAndForWrongClocks) {
    std::vector<std::string> all;
    const auto save = [&](Time start, std::size_t days, int inADay) {
        for (std::size_t day = 0; day < days; ++day)
            for (int till = 0; till < inADay; ++till)
                all.push_back(Save(start + hours(24 * day) + minutes(till)));
    };
    save(now, BackupStore::kDays, 1);
    const Time last = now + hours(24 * BackupStore::kDays);
    save(last, 1, 60);
    save(last + hours(24 * 365 * 14), BackupStore::kLaterDays - 1, 1);
    save(last + minutes(60), 1, 60);
    const std::set<std::string> different(all.begin(), all.end());
    EXPECT_EQ(different.size(), all.size());
    EXPECT_EQ(store.List().size(), all.size());
    for (const std::string& id : all)
        EXPECT_TRUE(IsKept(id)) << id;
}

TEST_F(Backups, GoWhenTheyAreOldAndNobodyNamesThem) {
    constexpr std::size_t kGone = 5;
    const std::size_t days = BackupStore::kDays + BackupStore::kLaterDays + kGone;
    std::vector<std::string> daily;
    int asked = 0;
    named = [&]() -> BackupStore::Named {
        ++asked;
        return {{daily[1], ""}, // at any age
                {daily[2], TimeText(now + hours(24 * kGone))},
                {daily[3], TimeText(now + hours(24 * 3))}};
    };
    for (std::size_t day = 0; day < days; ++day)
        daily.push_back(Save(now + hours(24 * day)));
    EXPECT_GT(asked, 0);
    for (std::size_t day = 0; day < days; ++day)
        EXPECT_EQ(IsKept(daily[day]), day == 1 || day == 2 || day >= kGone) << day;
    asked = 0;
    for (int day = 0; day < 3; ++day) // rarely used: as old as the others, but none is later
        (void)store.Save({backup.content, "", "", {"till 3", ""}}, {},
                         now + hours(24 * 365 * (day + 1)), named);
    EXPECT_EQ(asked, 0);
}

TEST_F(Backups, TellOfWhichTillTheyAre) {
    const char* units[] = {"till 1", "till-1", "Kasse \xC3\xA4/..", ""};
    std::set<std::string> folders;
    for (const char* unit : units) {
        backup.till = {unit, std::string("line of ") + unit};
        backup.document = std::string("document of ") + unit;
        backup.origin = std::string("origin of ") + unit;
        const BackupEntry entry = store.Find(Save(now));
        folders.insert(entry.keyboard);
        EXPECT_EQ(entry.document.parent_path().parent_path(), records);
        const Backup loaded = store.Load(entry);
        EXPECT_TRUE(loaded.content.HoldsSame(backup.content));
        EXPECT_EQ(loaded.content.identity, backup.content.identity);
        EXPECT_EQ(loaded.till.unit, backup.till.unit);
        EXPECT_EQ(loaded.till.place, backup.till.place);
        EXPECT_EQ(loaded.document, backup.document);
        EXPECT_EQ(loaded.origin, backup.origin);
    }
    EXPECT_EQ(folders.size(), std::size(units));
    const Time time =
        std::chrono::sys_days(std::chrono::January / 31 / 2026) + hours(9) + minutes(5);
    EXPECT_EQ(store.Find(Save(time)).time.substr(0, 21), "20260131T090500.000Z-");
    EXPECT_EQ(TimeText(time), "2026-01-31T09:05:00.000Z");
    EXPECT_THROW((void)store.Find("another"), Error);
}

// Leftovers of killed programs are removed, but not a file that another program may be writing.
TEST_F(Backups, AreKeptApartFromWhatIsLeftHalfWritten) {
    const BackupEntry entry = store.Find(Save(now));
    const auto place = records / entry.keyboard;
    files::WriteFileAtomically(place / "20260101T000000.000Z-1-1.json", "its bytes come yet");
    for (const char* name : {"old.json.new-1-0", "young.json.new-2-0"})
        files::WriteFileAtomically(place / name, "half");
    std::filesystem::last_write_time(place / "old.json.new-1-0",
                                     std::filesystem::file_time_type::clock::now() - hours(25));
    (void)Save(now + minutes(1));
    EXPECT_EQ(store.List().size(), 2U);
    EXPECT_FALSE(std::filesystem::exists(place / "old.json.new-1-0"));
    EXPECT_TRUE(std::filesystem::exists(place / "young.json.new-2-0"));
    EXPECT_TRUE(std::filesystem::exists(place / "20260101T000000.000Z-1-1.json"));

    const auto areas = records / (entry.id + ".areas.json");
    std::string text = files::ReadFile(areas);
    text.replace(text.find("6279746573"), 2, "00"); // "bytes"
    files::WriteFileAtomically(areas, text);
    EXPECT_THROW((void)store.Load(entry), Error);
}

// An old backup stays while an interrupted write, or a receipt of the last days, names it.
TEST_F(RecordsTest, ABackupThatARecordNamesStays) {
    keyboard.cutAfter = 2;
    ASSERT_TRUE(Download(keyboard, kNew));
    const std::string ofJournal = Entries().at(0).backup;
    BackupStore store = WriteRecords(records).backups;
    const Backup backup = store.Load(store.Find(ofJournal));
    const std::string unneeded = store.Save(backup, {}, now, NothingNamed);
    const std::string ofReceipt = store.Save(backup, {}, now, NothingNamed);
    now += hours(24 * 365);
    const auto all = [&] {
        return BackupStore::Named{{ofJournal, ""}, {ofReceipt, ""}, {unneeded, ""}};
    };
    for (std::size_t day = 0; day < BackupStore::kLaterDays; ++day)
        (void)store.Save(backup, {}, now += hours(24), all);
    Receipt receipt;
    receipt.backup = ofReceipt;
    WriteRecords(records).receipts.Add(receipt, now);
    TroubledKeyboard other{kSmall, "SMALL"};
    const auto keptByDownload = [&] {
        other.memory = before;
        EXPECT_FALSE(Download(other, kNew));
        std::set<std::string> kept;
        for (const BackupEntry& entry : store.List())
            kept.insert(entry.id);
        return kept;
    };
    // One that cannot be read may name any.
    for (const char* damaged : {"receipts/x.receipt.json", "journal/x.y.ANOTHER.journal.json"}) {
        std::ofstream(records / damaged) << "{";
        EXPECT_TRUE(keptByDownload().contains(unneeded)) << damaged;
        std::filesystem::remove(records / damaged);
    }
    const std::set<std::string> kept = keptByDownload();
    EXPECT_TRUE(kept.contains(ofJournal));
    EXPECT_TRUE(kept.contains(ofReceipt));
    EXPECT_FALSE(kept.contains(unneeded));
}

#ifndef _WIN32

TEST_F(RecordsTest, AreTheUsersOwnWhateverTheMask) {
    const mode_t mask = umask(0);
    keyboard.cutAfter = 2;
    EXPECT_TRUE(Download(keyboard, kNew));
    umask(mask);
    namespace fs = std::filesystem;
    int found = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(records)) {
        ++found;
        EXPECT_EQ(entry.status().permissions(),
                  entry.is_directory() ? fs::perms::owner_all
                                       : fs::perms::owner_read | fs::perms::owner_write)
            << entry.path();
    }
    EXPECT_GE(found, 10);
    EXPECT_EQ(fs::status(records).permissions(), fs::perms::owner_all);
}

TEST_F(RecordsTest, OfManyProgramsAtTheSameTimeAreAllKept) {
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

#endif

// A damaged entry keeps its own keyboard from being written to, and no other; a damaged receipt
// keeps nothing from anything. One that was made by hand has no hash, or wrong members.
TEST_F(RecordsTest, ThatAreNotAsTheyWereWrittenAreNamedAndKeepNoOtherKeyboardBack) {
    keyboard.cutAfter = 2;
    ASSERT_TRUE(Download(keyboard, kNew));
    keyboard.Replug();
    const auto entry = Entries().at(0).file;
    const std::string text = files::ReadFile(entry);
    const auto receipt = RecordsIn(records / "receipts", ".json").at(0);
    files::WriteFileAtomically(receipt, files::ReadFile(receipt).substr(1));
    const auto replaced = [&](const std::string& what, const std::string& by) {
        std::string damaged = text;
        return damaged.replace(text.find(what), what.size(), by);
    };
    const auto byHand = [&](const std::function<void(Json&)>& change, bool hasHash) {
        Json record = Json::parse(text);
        record.erase("recordSha256");
        change(record);
        if (hasHash)
            record["recordSha256"] = files::Sha256(PrettyText(record));
        return PrettyText(record);
    };
    const std::string to = R"("to": ")";
    const char digit = text[text.find(to) + to.size()];
    const std::pair<const char*, std::string> damages[] = {
        {"a new byte, which would be written and proved",
         replaced(to + digit, to + (digit == '0' ? '1' : '0'))},
        {"an address", replaced("4096", "4099")},
        {"a NUL", replaced("ranges", std::string("range\0", 6))},
        {"the abilities", replaced(R"("capabilities": )", R"("capabilities": 8)")},
        {"no hash", byHand([](Json&) {}, false)},
        {"a text for a list", byHand([](Json& record) { record["ranges"] = "none"; }, true)},
        {"a number for a text", byHand([](Json& record) { record["document"] = 5; }, true)},
        {"a member that is missing", byHand([](Json& record) { record.erase("rest"); }, true)},
        {"a digit that is none",
         byHand([](Json& record) { record["ranges"][0]["to"].get_ref<std::string&>()[0] = 'g'; },
                true)},
        {"a member that nobody knows",
         byHand([](Json& record) { record["ranges"][0]["extra"] = 1; }, true)},
        {"an unknown version", byHand([](Json& record) { record["version"] = 7; }, true)},
        {"no record", "[1]"},
    };
    for (const auto& [what, damaged] : damages) {
        SCOPED_TRACE(what);
        ASSERT_NE(damaged, text);
        files::WriteFileAtomically(entry, damaged);
        const auto refused = Download(keyboard, kNew);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->Kind(), ErrorKind::FileFailed);
        EXPECT_EQ(refused->Why(), Cause::EntryDamaged);
        ASSERT_EQ(refused->related.size(), 1U);
        EXPECT_EQ(refused->related[0].Why(), Cause::RecordDamaged);
        EXPECT_EQ(refused->related[0].place.file, entry.string());
        EXPECT_FALSE(refused->related[0].faults.empty());
        EXPECT_EQ(keyboard.bytesWritten, 0);

        TroubledKeyboard other{kWithGuid, "SMALL"};
        other.memory = before;
        EXPECT_FALSE(Download(other, kNew));
    }
    // One whose name does not show its keyboard may be of any.
    const auto unnamed = entry.parent_path() / "found.journal.json";
    files::WriteFileAtomically(unnamed, "{");
    TroubledKeyboard any{kWithGuid, "SMALL"};
    EXPECT_TRUE(Download(any, kNew));
    std::filesystem::remove(unnamed);
    std::vector<DamagedRecord> damaged;
    const auto receipts = WriteRecords(records).receipts.List(&damaged);
    EXPECT_EQ(receipts.size(), std::size(damages)) << "of the other keyboard";
    ASSERT_EQ(damaged.size(), 1U);
    EXPECT_EQ(damaged[0].file, receipt);

    files::WriteFileAtomically(entry, text);
    EXPECT_TRUE(Recover(keyboard, Writer::Way::RollBack));
    EXPECT_TRUE(keyboard.memory == before);
}

} // namespace qx::host
