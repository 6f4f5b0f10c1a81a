// Writer: writes to a keyboard so that nothing is called done that has not been proved, and nothing
// is lost that the keyboard held.
//
// A write goes: plan, backup, journal, check that the keyboard is still the planned one, the bytes,
// reading back and comparing, end of the journal, receipt. Whatever breaks off between, the journal
// knows what the keyboard may hold, and Recover makes it exactly the old or exactly the new. Of all
// programs one at a time writes to a keyboard.
#pragma once

#include "host/BackupStore.h"
#include "host/Journal.h"
#include "host/Receipts.h"
#include "host/Session.h"
#include "host/Till.h"
#include "host/WritePlan.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace qx::host {

// Where all records of writes are kept.
struct WriteRecords {
    explicit WriteRecords(const std::filesystem::path& folder)
        : backups(folder / "backups"), journal(folder / "journal", folder / "locks"),
          receipts(folder / "receipts") {}
    BackupStore backups;
    Journal journal;
    Receipts receipts;
};

// A write to the opened keyboard that was interrupted.
struct PendingWrite : JournalEntry {
    // Whether what the keyboard holds comes from that write, so that it can be finished and rolled
    // back; else a backup can be restored, or the write forgotten.
    bool isRecoverable = false;
};

class Writer {
public:
    struct Options {
        std::filesystem::path folder; // of the records
        // A configuration for the opened keyboard, with its layout.
        std::function<std::unique_ptr<Configuration>()> newConfiguration;
        Clock now = [] { return std::chrono::system_clock::now(); };
        // How the keyboard is reached, the same each time, as setup::OpenedDriver tells it: by this
        // one without a GUID is known again.
        std::string origin = {};
        Till till = {}; // which one it is, where that is known
    };
    struct Request {
        static constexpr const char* kRestore = "restore"; // settles what was interrupted
        std::string action = "download";
        std::string document;       // the name of what is written, for people
        std::string documentSha256; // may be empty
        bool full = false;          // send what the control contract requests, changed or not
        bool verify = true;
    };
    struct Outcome {
        bool isWritten = false; // false: there was nothing to do
        bool isVerified = false;
        Long bytesSent = 0;
        std::string backup; // the id of the one made before
    };

    // The session is open and outlives the writer.
    Writer(Session& session, Options options);

    // What a write of the settings in these sections would do now. That there is nothing to do is
    // proved by a second reading; throws Error(KeyboardChanged) when that reads otherwise.
    [[nodiscard]] WritePlan Plan(const std::vector<Section*>& sections);
    // What it takes to bring a backup back. Throws Error(KeyboardChanged) when the backup is of
    // another kind of keyboard, or, unless that is allowed, of another one of the same kind, which
    // keeps its own GUID. Areas that are not in the backup stay as they are, and the plan says so.
    [[nodiscard]] WritePlan PlanRestore(const KeyboardContent& backup, bool otherKeyboard = false);

    // Writes. Throws Error: KeyboardChanged when the keyboard is not as it was planned for,
    // WriteInterrupted when Recover is to come first, KeyboardBusy when another program writes to
    // it, FileFailed when there can be no record, TransferFailed, ReadBackDiffers. The message says
    // what the keyboard holds then. The action kRestore settles what was interrupted, also when
    // there is nothing to do.
    Outcome Write(const WritePlan& plan, const Request& request);

    // The write to this keyboard that was interrupted, if there is one: of several the newest that
    // can be recovered. One that is still going on is none.
    [[nodiscard]] std::optional<PendingWrite> Interrupted();
    enum class Way { Finish, RollBack };
    // Makes the keyboard hold all new, or all old, bytes of that write, and proves it. Throws as
    // Write does; until it succeeds it can be tried again, either way. Throws
    // Error(WriteInterrupted) when the keyboard holds what cannot come from that write.
    Outcome Recover(const JournalEntry& entry, Way way);
    // Leaves the keyboard as it is and no longer takes the write for interrupted.
    void Forget(const JournalEntry& entry);

    // Runs an operation that writes to the keyboard by itself, such as the driver's loading of a
    // file: after a backup, with a receipt, and unproved. Throws as Write does.
    Outcome RunUnproved(const Request& request, const std::function<void()>& operation);

    [[nodiscard]] const WriteRecords& Records() const { return m_records; }

private:
    enum class Holds { Before, After, Mixed, Unknown };
    class Failure;

    using Claimed = std::unique_ptr<files::FileLock>;

    [[nodiscard]] KeyboardContent Read();
    void RequireStillAs(const KeyboardContent& planned);
    void ProveNothingToDo(const WritePlan& plan);
    [[nodiscard]] Claimed Claim(const KeyboardIdentity& keyboard) const;
    // The keyboard's own entries, oldest first.
    [[nodiscard]] std::vector<PendingWrite> Own(const KeyboardContent& now) const;
    static void RefuseInterrupted(const std::vector<PendingWrite>& own);
    [[nodiscard]] std::string SaveBackup(const KeyboardContent& now);
    [[nodiscard]] Holds Look(const KeyboardContent& before, const KeyboardContent& after);
    void Send(const KeyboardContent& before, const KeyboardContent& after,
              const std::vector<ByteRange>& ranges);
    void Verify(const KeyboardContent& before, const KeyboardContent& after, Receipt& receipt);
    [[nodiscard]] Error Differing(const KeyboardContent& expected, const KeyboardContent& found);
    // Sends and proves, and leaves a receipt of what came of it.
    void Execute(const WritePlan& plan, const std::vector<ByteRange>& ranges, bool verify,
                 Receipt receipt);
    void EndJournal(const JournalEntry& entry);
    void EndAll(const std::vector<PendingWrite>& entries);
    [[nodiscard]] Error AfterEnding(const JournalEntry& entry, const Error& failure);
    [[nodiscard]] KeyboardContent ReadFor(const JournalEntry& entry);

    Session& m_session;
    Options m_options;
    WriteRecords m_records;
    std::unique_ptr<Configuration> m_scratch;
};

} // namespace qx::host
