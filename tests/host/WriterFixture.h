// WriterFixture: a keyboard in memory, an old and a new configuration of it, and programs that use
// them through a Writer.
#pragma once

#include "host/ErrorText.h"
#include "host/Writer.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "support/TempFolder.h"
#include "support/TroubledKeyboard.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace qx::host {

inline const std::vector<test::FakeDriver::Entry> kSmall = {{MODULE_MAGNET_CONFIG, 0x1000},
                                                            {MODULE_MAGNET_HEADERS, 0x1300}};
inline const std::vector<test::FakeDriver::Entry> kWithGuid = {
    {MODULE_MAGNET_CONFIG, 0x1000}, {MODULE_MAGNET_HEADERS, 0x1300}, {MODULE_GUID, 0x1500}};

// The settings that differ between the old and the new configuration.
struct Settings {
    Byte outputDelay;
    std::string header;
};
inline const Settings kOld = {6, R"("A")"};
inline const Settings kNew = {9, R"("1 2 3 4 5 6 7 8 9")"};
inline const Settings kThird = {12, R"("Q W E")"};

class WriterFixture : public testing::Test {
protected:
    using TroubledKeyboard = test::TroubledKeyboard;

    WriterFixture() {
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
                [this] { return now += std::chrono::seconds(1); },
                origin,
                till,
                [this] { return isStopped; }};
    }

    // A program's actions on the opened keyboard; returns the error that ended them, if any.
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

    // The plan for these settings on the opened keyboard.
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
    std::optional<Error> Restore(TroubledKeyboard& driver, const std::string& id,
                                 bool otherKeyboard = false, bool verify = true) {
        return Use(driver, [&](Session&, Writer& writer) {
            const BackupStore& backups = writer.Records().backups;
            Writer::Request request;
            request.action = WriteAction::Restore;
            request.verify = verify;
            outcome = {};
            outcome = writer.Write(
                writer.PlanRestore(backups.Load(backups.Find(id)), otherKeyboard), request);
        });
    }

    // Keyboards of one model behind one driver, without an identifier or with a copied one.
    TroubledKeyboard NewKeyboard(bool hasGuid, const std::string& memory) {
        TroubledKeyboard driver{hasGuid ? kWithGuid : kSmall, "SMALL"};
        driver.memory = memory;
        if (hasGuid)
            driver.memory.replace(0x1500, 16, "0123456789ABCDEF");
        return driver;
    }
    // A download that stops after a number of bytes.
    void Interrupt(TroubledKeyboard& driver, Long bytes, const Settings& settings = kNew) {
        driver.cutAfter = bytes;
        EXPECT_TRUE(Download(driver, settings));
        driver.Replug();
    }

    // After a restart, recovers the write whose part the keyboard contains; false if there is none.
    bool Recover(TroubledKeyboard& driver, Writer::Way way) {
        driver.Replug();
        bool wasInterrupted = false;
        const auto error = Use(driver, [&](Session&, Writer& writer) {
            const auto entries = writer.Interrupted();
            wasInterrupted = !entries.empty();
            if (wasInterrupted)
                writer.Recover(entries.front(), way);
        });
        EXPECT_FALSE(error) << TextOf(*error);
        return wasInterrupted;
    }

    [[nodiscard]] std::size_t Count(const std::string& folder) const {
        return RecordsIn(records / folder, ".json").size();
    }
    [[nodiscard]] std::vector<Receipt> AllReceipts() const {
        return WriteRecords(records).receipts.List();
    }
    [[nodiscard]] std::vector<JournalEntry> Entries() const {
        return WriteRecords(records).journal.Entries();
    }

    // Checks the state after a run from this memory, whether it failed or not: only old and new
    // bytes, a correct report about them, and a recovery that leads to one complete configuration.
    // A roll-back is to write the old ones.
    void CheckAfter(const std::optional<Error>& error, Writer::Way way, const std::string& started,
                    Writer::Way run = Writer::Way::Finish) {
        if (!error) {
            ASSERT_TRUE(keyboard.memory == after) << "reported as done";
        }
        const std::string said = error ? TextOf(*error) : "";
        const auto holds = error ? error->holds : std::nullopt;
        if (holds == Holds::NotTouched || holds == Holds::Old) {
            ASSERT_TRUE(keyboard.memory == started) << said;
        }
        if (holds == Holds::New) {
            ASSERT_TRUE(keyboard.memory == (run == Writer::Way::Finish ? after : before)) << said;
        }
        if (holds == Holds::NotTouched && started == before) {
            ASSERT_EQ(Count("journal"), 0U) << said;
        }
        const bool isWhole = keyboard.memory == before || keyboard.memory == after;
        ASSERT_EQ(Recover(keyboard, way), !isWhole) << said;
        if (!isWhole) {
            ASSERT_TRUE(keyboard.memory == (way == Writer::Way::Finish ? after : before)) << said;
        }
        ASSERT_FALSE(Recover(keyboard, way)) << "nothing is left to recover";
    }

    test::TempFolder folder{test::TempFolder::InMemory()};
    std::filesystem::path records = folder / "data";
    Time now = Time(std::chrono::hours(24 * 365 * 56));
    QXKeyboardLayoutData layout;
    std::string origin = "the first port";
    Till till;
    bool isStopped = false;
    TroubledKeyboard keyboard{kSmall, "SMALL"};
    std::string before;
    std::string after;
    Writer::Outcome outcome;
};

} // namespace qx::host
