// Writer: writes to a keyboard so that nothing is called done that has not been proved, and nothing
// is lost that the keyboard held.
//
// A write goes: plan, backup, journal, check that the keyboard is still the planned one, the bytes,
// reading back and comparing, end of the journal, receipt. Whatever breaks off between, the journal
// knows what the keyboard may hold, and Recover makes it exactly the old or exactly the new. Of all
// programs one at a time writes to a keyboard.
//
// The keyboard that is plugged in now need not be the one of a minute ago, nor can it always be
// told from another one. So a write on record concerns a keyboard only when that shows a part of
// it.
#pragma once

#include "host/BackupStore.h"
#include "host/Journal.h"
#include "host/Receipts.h"
#include "host/Sending.h"
#include "host/Session.h"
#include "host/Till.h"
#include "host/Traces.h"
#include "host/WritePlan.h"

#include <functional>
#include <memory>
#include <optional>
#include <set>
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

class Writer {
public:
    struct Options {
        std::filesystem::path folder; // of the records
        // A configuration for the opened keyboard, with its layout.
        std::function<std::unique_ptr<Configuration>()> newConfiguration;
        Clock now = [] { return std::chrono::system_clock::now(); };
        // How the keyboard is reached, the same each time, as setup::OpenedDriver tells it.
        std::string origin = {};
        Till till = {}; // which one it is, where that is known
        // Whether the user wants to stop. Asked before the first byte is sent; what has begun to
        // be sent is sent, proved and recorded.
        std::function<bool()> isStopped = [] { return false; };
        OnStep onStep = [](Step) {}; // must not throw
    };
    struct Request {
        static constexpr const char* kRestore = "restore"; // settles what was interrupted
        std::string action = "download";
        std::string document;       // the name of what is written, for people
        std::string documentSha256; // may be empty
        bool full = false;          // send what the control contract requests, changed or not
        bool verify = true;
        bool isOfKeyboard = true; // of RunUnproved: it changes what backups save
    };
    struct Outcome {
        bool isWritten = false;  // false: there was nothing to do
        bool isVerified = false; // the keyboard has been read and holds all of it
        Long bytesSent = 0;
        std::string backup; // the id of the one made before
        // Of Recover: the record of the write is kept, since the keyboard showed a part of others
        // too.
        bool isRecordKept = false;
    };

    // The session is open and outlives the writer.
    Writer(Session& session, Options options);

    // What a write of the settings in these sections would do now. An empty plan is returned only
    // after a second reading confirms it; throws Error(KeyboardChanged) when that one differs.
    [[nodiscard]] WritePlan Plan(const std::vector<Section*>& sections,
                                 const PlanOptions& options = {});
    // What it takes to bring a backup back. Throws Error(KeyboardChanged) when the backup is of
    // another kind of keyboard, or, unless that is allowed, of what seems to be another one of the
    // same kind: it has another GUID, was reached in another way, or is of a unit that the records
    // do not show this keyboard to be. Such a keyboard keeps its own GUID. Areas that are not in
    // the backup stay as they are, and the plan says so.
    [[nodiscard]] WritePlan PlanRestore(const Backup& backup, bool otherKeyboard = false);

    // Writes. Throws Error: KeyboardChanged when the keyboard is not as it was planned for,
    // WriteInterrupted when Recover is to come first, KeyboardBusy when another program writes to
    // it, FileFailed when there can be no record, TransferFailed, ReadBackDiffers. The error shows
    // what the keyboard holds then: all that was to be written when only the records failed. The
    // action kRestore settles what was interrupted.
    Outcome Write(const WritePlan& plan, const Request& request);

    // The writes on record to keyboards of this kind, oldest first, without those that are still
    // going on.
    [[nodiscard]] std::vector<TracedWrite> OnRecord();
    // Those that this keyboard may have been cut in, the newest first: it holds a part of each.
    // There are several where other keyboards that cannot be told from it were cut in other writes.
    [[nodiscard]] std::vector<JournalEntry> Interrupted();
    enum class Way { Finish, RollBack };
    // Makes the keyboard hold all new, or all old, bytes of that write, and proves it. Throws as
    // Write does; until it succeeds it can be tried again, either way. Throws
    // Error(KeyboardChanged), and does nothing, when the keyboard does not hold a part of the
    // write: it may be another one. Where it may have been cut in others too: when the user has not
    // named this one, throws Error(WriteInterrupted) unless all of them lead to the same contents,
    // and keeps the record, which may be of another keyboard.
    Outcome Recover(const JournalEntry& entry, Way way, bool isNamed = false);

    // Runs an operation that writes to the keyboard by itself, such as the driver's loading of a
    // file: after a backup, unless it is of another memory than the keyboard's, with a receipt, and
    // unproved. Throws as Write does.
    Outcome RunUnproved(const Request& request, const std::function<void()>& operation);

    [[nodiscard]] const WriteRecords& Records() const { return m_records; }

private:
    using Claimed = std::unique_ptr<files::FileLock>;
    using Claims = std::set<std::string>; // those that this writer has itself

    [[nodiscard]] KeyboardContent Read();
    void RequireStillAs(const KeyboardContent& planned);
    // The same as a step of its own, right before the first byte.
    void CheckBeforeWriting(const KeyboardContent& planned);
    void ProveNothingToDo(const WritePlan& plan);
    [[nodiscard]] Claimed Claim(const std::string& keyboard) const;
    // What the keyboard holds in the areas of the entry.
    [[nodiscard]] KeyboardContent AsReadFor(const JournalEntry& entry, const KeyboardContent& now);
    // The writes on record to keyboards of its kind, but for those that are going on under a claim
    // of another program.
    [[nodiscard]] std::vector<TracedWrite> Traced(const KeyboardContent& now,
                                                  const Claims& own = {});
    // Those of which the keyboard holds a part.
    [[nodiscard]] std::vector<JournalEntry> PartlyIn(const KeyboardContent& now,
                                                     const Claims& own = {});
    void RefuseInterrupted(const std::vector<JournalEntry>& entries) const;
    // Throws where the others of which the keyboard holds a part lead to other contents.
    void RequireOneEnd(const std::vector<JournalEntry>& candidates, Way way,
                       const KeyboardContent& now) const;
    [[nodiscard]] std::optional<Error> WhyOfOtherKeyboard(const Backup& backup,
                                                          const KeyboardContent& now);
    [[nodiscard]] std::string SaveBackup(const KeyboardContent& now, const std::string& document,
                                         const Till& till);
    [[nodiscard]] std::optional<BackupStore::Named> NamedBackups() const;
    [[nodiscard]] JournalEntry Begin(const WritePlan& plan, const std::vector<ByteRange>& ranges,
                                     const Request& request,
                                     const std::vector<JournalEntry>& replaced);
    [[nodiscard]] Receipt NewReceipt(const Request& request, const KeyboardContent& before) const;
    // The failure of a sending, after its receipt.
    [[nodiscard]] Error Failed(const Sent& sent, const JournalEntry& entry, Receipt receipt);
    // Ends the entry, if there is one, and those that it replaces, and leaves the receipt, as far
    // as that can be done; throws Error(FileFailed) for the rest.
    void Close(const JournalEntry* entry, bool isProved, const Receipt& receipt);

    Session& m_session;
    Options m_options;
    WriteRecords m_records;
    std::unique_ptr<Configuration> m_scratch;
};

} // namespace qx::host
