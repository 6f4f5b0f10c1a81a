// Identifying the keyboard: an interrupted write is recovered in its own keyboard and in no other,
// and its record is deleted only once that is verified or the user demands it.
#include "WriterFixture.h"

#include "host/Traces.h"
#include "qxcontrols/device/MemoryMap.h"

#include <set>

namespace qx::host {

namespace {

class Recovery : public WriterFixture {
protected:
    std::vector<JournalEntry> InterruptedIn(TroubledKeyboard& driver) {
        std::vector<JournalEntry> found;
        EXPECT_FALSE(Use(driver, [&](Session&, Writer& writer) { found = writer.Interrupted(); }));
        return found;
    }
    // The keyboard has this trace of the only write on record, and a recovery does not touch it.
    void ExpectLeftAlone(TroubledKeyboard& driver, Trace trace) {
        const std::string memory = driver.memory;
        driver.bytesWritten = 0;
        EXPECT_FALSE(Use(driver, [&](Session& session, Writer& writer) {
            EXPECT_TRUE(writer.Interrupted().empty());
            EXPECT_TRUE(PartlyHeld(session, Entries()).empty());
            const auto writes = writer.OnRecord();
            ASSERT_EQ(writes.size(), 1U);
            EXPECT_EQ(writes[0].trace, trace);
            for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
                try {
                    writer.Recover(writes[0], way);
                    ADD_FAILURE() << "recovered";
                } catch (const Error& error) {
                    EXPECT_EQ(error.Kind(), ErrorKind::KeyboardChanged);
                    EXPECT_EQ(error.holds, Holds::NotTouched);
                }
            }
        }));
        EXPECT_EQ(driver.bytesWritten, 0);
        EXPECT_TRUE(driver.memory == memory);
    }
};

} // namespace

// A is interrupted; B, indistinguishable from A, is plugged in and used; then A returns.
TEST_F(Recovery, ATwinIsNeitherRecoveredNorRefused) {
    ASSERT_FALSE(Download(keyboard, kNew));
    const Long all = outcome.bytesSent;
    TroubledKeyboard third{kSmall, "SMALL"};
    third.memory = before;
    ASSERT_FALSE(Download(third, kThird));
    const std::pair<std::string, Trace> twins[] = {
        {before, Trace::Before}, {after, Trace::After}, {third.memory, Trace::None}};
    for (const bool hasGuid : {false, true})
        for (const Long cut : {Long{0}, Long{3}, all})
            for (const auto& [held, trace] : twins)
                for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
                    SCOPED_TRACE(std::to_string(hasGuid) + " cut after " + std::to_string(cut) +
                                 ", twin " + std::to_string(static_cast<int>(trace)));
                    Reset();
                    TroubledKeyboard a = NewKeyboard(hasGuid, before);
                    const std::string old = a.memory;
                    Interrupt(a, cut);
                    const std::string interrupted = a.memory;
                    TroubledKeyboard b = NewKeyboard(hasGuid, held);
                    ExpectLeftAlone(b, trace);
                    const auto id = Entries().at(0).Id();
                    for (const Settings& settings : {kThird, kNew, kOld}) {
                        EXPECT_FALSE(Download(b, settings));
                        ASSERT_EQ(Entries().size(), 1U);
                        EXPECT_EQ(Entries()[0].Id(), id) << "A's record must remain";
                    }
                    ASSERT_TRUE(a.memory == interrupted);
                    if (cut == 3) {
                        const auto refused = Download(a, kThird);
                        ASSERT_TRUE(refused);
                        EXPECT_EQ(refused->Kind(), ErrorKind::WriteInterrupted);
                        EXPECT_EQ(a.bytesWritten, 0);
                        EXPECT_TRUE(Recover(a, way));
                        EXPECT_EQ(a.memory == old, way == Writer::Way::RollBack);
                        EXPECT_TRUE(
                            a.memory.substr(0, 0x1500) ==
                            (way == Writer::Way::Finish ? after : before).substr(0, 0x1500));
                        EXPECT_EQ(Entries().size(), 0U);
                    } else { // all or nothing written: could be a twin, too
                        ExpectLeftAlone(a, cut == 0 ? Trace::Before : Trace::After);
                        EXPECT_FALSE(Download(a, kThird));
                        ASSERT_EQ(Entries().size(), 1U);
                        const WriteRecords all(records);
                        EXPECT_THROW((void)all.journal.Find("another"), Error);
                        all.Forget(all.journal.Find(id));
                        EXPECT_EQ(Entries().size(), 0U);
                    }
                }
}

// A keyboard with part of the write is recognised, even if it is now reached differently.
TEST_F(Recovery, AKeyboardIsKnownAgainAtAnotherPlace) {
    till = {"till 1", "line1.so"};
    Interrupt(keyboard, 2);
    origin = "the second port";
    till = {};
    ASSERT_EQ(InterruptedIn(keyboard).size(), 1U);
    EXPECT_EQ(InterruptedIn(keyboard)[0].till.unit, "till 1");
    // A different keyboard is one with another name, other capabilities, or modules at other
    // addresses.
    std::vector<TroubledKeyboard> others(
        3, {std::vector<test::FakeDriver::Entry>{kSmall[0], {kSmall[1].module, 0x1308}}, "SMALL"});
    others[0] = {kSmall, "LARGE"};
    others[1] = {kSmall, "SMALL"};
    others[1].image[kCapabilityAddress] ^= 1;
    for (TroubledKeyboard& other : others) {
        other.memory.replace(0, 0x7FC0, keyboard.memory, 0, 0x7FC0);
        SCOPED_TRACE(&other - others.data());
        EXPECT_TRUE(InterruptedIn(other).empty());
        const std::string held = other.memory;
        const auto refused = Use(other, [&](Session&, Writer& writer) {
            writer.Recover(Entries().at(0), Writer::Way::RollBack, true);
        });
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->Kind(), ErrorKind::KeyboardChanged);
        EXPECT_TRUE(other.memory == held);
    }
    EXPECT_TRUE(Recover(keyboard, Writer::Way::Finish));
    EXPECT_TRUE(keyboard.memory == after);
    EXPECT_EQ(Entries().size(), 0U);
}

// A keyboard's areas depend on the layout used for writing; it is recognised and recovered with any
// layout.
TEST_F(Recovery, AKeyboardIsKnownAgainWithOtherAreas) {
    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
        Reset();
        EXPECT_FALSE(Use(keyboard, [&](Session& session, Writer& writer) {
            const WritePlan plan = Plan(session, writer, kNew);
            KeyboardContent content = plan.before;
            content.pieces.push_back(
                {MODULE_POS, "pos", 0x5000, keyboard.memory.substr(0x5000, 64)});
            JournalEntry entry;
            entry.ranges = plan.ToSend(false);
            entry.ranges.push_back(
                {MODULE_POS, "pos", 0x5010, std::string(1, keyboard.memory[0x5010]), "\x77"});
            writer.Records().journal.Begin(entry, content, now);
        }));
        keyboard.memory[0x1000] = after[0x1000];
        EXPECT_TRUE(Recover(keyboard, way));
        std::string expected = before;
        if (way == Writer::Way::Finish)
            expected = after.replace(0x5010, 1, "\x77");
        EXPECT_TRUE(keyboard.memory == expected);
        EXPECT_EQ(Entries().size(), 0U);
    }
}

// Two keyboards are interrupted in the same write at different bytes: recovering one keeps the
// other's record.
TEST_F(Recovery, EveryInterruptedKeyboardHasItsRecord) {
    for (const Writer::Way way : {Writer::Way::Finish, Writer::Way::RollBack}) {
        Reset();
        TroubledKeyboard a = NewKeyboard(false, before);
        TroubledKeyboard b = NewKeyboard(false, before);
        const auto at = [&](const char* place, const char* unit) {
            origin = place;
            till.unit = unit;
        };
        at("the first port", "till 1");
        Interrupt(a, 3);
        at("the second port", "till 2");
        Interrupt(b, 5);
        ASSERT_EQ(Entries().size(), 2U);
        at("the first port", "");
        EXPECT_TRUE(Recover(a, way));
        EXPECT_EQ(AllReceipts().back().till.unit, "till 1");
        ASSERT_EQ(Entries().size(), 1U);
        EXPECT_EQ(Entries()[0].till.unit, "till 2");
        EXPECT_TRUE(InterruptedIn(a).empty());
        at("the third port", "");
        EXPECT_TRUE(Recover(b, way));
        EXPECT_TRUE(a.memory == b.memory);
        EXPECT_EQ(Entries().size(), 0U);
    }
}

// Two indistinguishable tills are interrupted in writes of different settings, and one contains
// parts of both.
TEST_F(Recovery, WhichOfSeveralWritesItWasIsNeverGuessed) {
    const Settings kNew2 = {kNew.outputDelay, R"("1 Q W E")"};
    TroubledKeyboard b = NewKeyboard(false, before);
    EXPECT_FALSE(Download(b, kNew2));
    const std::string after2 = b.memory;
    for (const bool isMoved : {false, true}) {
        SCOPED_TRACE(isMoved);
        Reset();
        origin = "the first port";
        TroubledKeyboard a = NewKeyboard(false, before);
        b.memory = before;
        till.unit = "till 1";
        Interrupt(a, 1);
        const std::string cutA = a.memory;
        if (isMoved)
            origin = "the second port";
        till.unit = "till 2";
        Interrupt(b, 3, kNew2);
        till = {};
        const std::string cutB = b.memory;
        ASSERT_EQ(Entries().size(), 2U);
        ASSERT_EQ(InterruptedIn(a).size(), 2U);
        ASSERT_EQ(InterruptedIn(b).size(), 1U);

        // It cannot be finished without naming the write.
        const auto finish = [&](const JournalEntry& entry, bool isNamed) {
            return Use(a, [&](Session&, Writer& writer) {
                writer.Recover(entry, Writer::Way::Finish, isNamed);
            });
        };
        const auto refused = finish(InterruptedIn(a)[0], false);
        ASSERT_TRUE(refused);
        EXPECT_EQ(refused->Kind(), ErrorKind::WriteInterrupted);
        std::set<std::string> named;
        for (const WriteName& write : refused->writes)
            named.insert(write.id);
        for (const JournalEntry& entry : Entries())
            EXPECT_TRUE(named.contains(entry.Id()));
        EXPECT_TRUE(a.memory == cutA);

        // Both roll back to the same content, which does not show which write it was.
        EXPECT_TRUE(Recover(a, Writer::Way::RollBack));
        EXPECT_TRUE(a.memory == before);
        EXPECT_EQ(AllReceipts().back().till.unit, "");
        EXPECT_EQ(Entries().size(), 2U);
        EXPECT_TRUE(InterruptedIn(a).empty());
        EXPECT_TRUE(Recover(b, Writer::Way::Finish));
        EXPECT_TRUE(b.memory == after2);
        ASSERT_EQ(Entries().size(), 1U);
        EXPECT_EQ(Entries()[0].till.unit, "till 1");

        // The user knows.
        a.memory = cutA;
        b.memory = before;
        Interrupt(b, 3, kNew2);
        ASSERT_EQ(InterruptedIn(a).size(), 2U);
        EXPECT_FALSE(finish(Entries()[0], true));
        EXPECT_TRUE(a.memory == after);
        ASSERT_EQ(Entries().size(), 1U);
        EXPECT_TRUE(Recover(b, Writer::Way::RollBack));
        EXPECT_EQ(Entries().size(), 0U);
        ASSERT_TRUE(cutB != before);
    }
}

// The cable is pulled, and another keyboard is plugged in before the failure is investigated.
TEST_F(Recovery, AKeyboardThatIsSwappedWhileItIsWrittenStaysOnRecord) {
    class Swapped : public TroubledKeyboard {
    public:
        using TroubledKeyboard::TroubledKeyboard;
        std::string next;
        std::string pulled;
        std::int32_t QXCFG_ImageSave() override {
            const std::int32_t status = TroubledKeyboard::QXCFG_ImageSave();
            pulled = std::exchange(memory, next);
            return status;
        }
    };
    for (const std::string& next : {before, after}) {
        Reset();
        Swapped driver{kSmall, "SMALL"};
        driver.memory = before;
        driver.next = next;
        driver.cutAfter = 2;
        EXPECT_TRUE(Download(driver, kNew));
        ASSERT_EQ(Entries().size(), 1U);
        keyboard.memory = driver.pulled;
        ASSERT_TRUE(keyboard.memory != before);
        EXPECT_TRUE(Recover(keyboard, Writer::Way::RollBack));
        EXPECT_TRUE(keyboard.memory == before);
        EXPECT_EQ(Entries().size(), 0U);
    }
}

// If the contents cannot result from the interruption, inside or outside the ranges, the write is
// neither finished nor rolled back; the backup exists, and the write stays on record.
TEST_F(Recovery, WhatTheWriteCannotHaveLeftIsLeftAlone) {
    for (const bool hasGuid : {true, false})
        for (const std::size_t changed : {0x1310U, 0x1000U}) {
            SCOPED_TRACE(std::to_string(hasGuid) + " " + std::to_string(changed));
            Reset();
            TroubledKeyboard driver = NewKeyboard(hasGuid, before);
            const std::string held = driver.memory;
            Interrupt(driver, 2);
            driver.memory[changed] = '\x33';
            ExpectLeftAlone(driver, Trace::None);
            EXPECT_FALSE(Restore(driver, Entries().at(0).backup));
            EXPECT_TRUE(driver.memory == held);
            EXPECT_EQ(Entries().size(), 1U);
        }
}

TEST_F(Recovery, ARecoveryBacksUpTheReplacedContents) {
    till.unit = "till 1";
    Interrupt(keyboard, 2);
    const std::string mixed = keyboard.memory;
    ASSERT_TRUE(Recover(keyboard, Writer::Way::RollBack));
    const BackupStore& backups = WriteRecords(records).backups;
    const auto saved = backups.List();
    ASSERT_EQ(saved.size(), 2U);
    for (const ContentPiece& piece : backups.Load(saved[1]).content.pieces)
        EXPECT_EQ(piece.bytes,
                  mixed.substr(static_cast<std::size_t>(piece.address), piece.bytes.size()));
    EXPECT_EQ(AllReceipts().back().backup, saved[1].id);
    EXPECT_EQ(AllReceipts().back().action, WriteAction::RollBack);
    EXPECT_EQ(AllReceipts().back().result, WriteResult::Verified);
}

} // namespace qx::host
