// Writer: writes to a keyboard such that success is only reported after verification, and none of
// the keyboard's contents are lost.
//
// The steps of a write: plan (WritePlan), claim (Claims), backup and journal (Recording), check
// that the keyboard is still the planned one, send the bytes, read back and compare (Sending), end
// the journal entry, receipt (Recording). Wherever it is interrupted, the journal knows the
// keyboard's possible contents (InterruptedWrites), and Recover makes them exactly the old or
// exactly the new ones.
#pragma once

#include "host/InterruptedWrites.h"
#include "host/Recording.h"
#include "host/Sending.h"
#include "host/Session.h"
#include "host/WritePlan.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qx::host {

class Writer {
public:
    struct Options {
        std::filesystem::path folder; // of the records
        // A configuration for the opened keyboard, with its layout.
        std::function<std::unique_ptr<Configuration>()> newConfiguration;
        Clock now = [] { return std::chrono::system_clock::now(); };
        // The keyboard's connection, the same each time, as in setup::OpenedDriver.
        std::string origin = {};
        Till till = {}; // which one it is, if known
        // Whether the user has cancelled. Called before the first byte is sent; a write that has
        // begun is completed, verified and recorded.
        std::function<bool()> isStopped = [] { return false; };
        OnStep onStep = [](Step) {}; // must not throw
    };
    using Request = WriteRequest;
    using Way = RecoverWay;
    struct Outcome {
        bool isWritten = false;  // false if there was nothing to do
        bool isVerified = false; // the keyboard was read and holds everything
        Long bytesSent = 0;
        std::string backup; // the id of the backup made before
        // For Recover: the record of the write is kept, because the keyboard contained parts of
        // others too.
        bool isRecordKept = false;
    };

    // The session is open and must outlive the writer.
    Writer(Session& session, Options options);
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    // What the keyboard holds.
    [[nodiscard]] KeyboardContent Read() { return m_session.ReadContent(*m_scratch); }
    // Plans for a keyboard that holds this, which is not read again. Not after the writer.
    [[nodiscard]] Planner PlannerFor(const KeyboardContent& held) { return {held, *m_scratch}; }
    // The plan for writing the settings in these sections now. An empty plan is returned only after
    // a second read confirms it; throws Error(KeyboardChanged) if the reads differ.
    [[nodiscard]] WritePlan Plan(const std::vector<Section*>& sections,
                                 const PlanOptions& options = {});
    // The plan for restoring a backup. Throws Error(KeyboardChanged) if the backup is of another
    // model or, unless that is allowed, seems to belong to another keyboard of the same model
    // (BackupMatch). Such a keyboard keeps its own GUID. Areas missing in the backup are unchanged
    // and listed in the plan.
    [[nodiscard]] WritePlan PlanRestore(const Backup& backup, bool otherKeyboard = false);

    // Writes. Throws Error: KeyboardChanged if the keyboard is not as planned, WriteInterrupted if
    // Recover must come first, KeyboardBusy if another program writes to it, FileFailed if it
    // cannot be recorded, TransferFailed, ReadBackDiffers. The error describes the keyboard's
    // contents: all new if only the records failed. The action Restore resolves
    // interrupted writes.
    Outcome Write(const WritePlan& plan, const Request& request);

    // The traces in the keyboard of the writes on record to keyboards of its model, oldest first,
    // except those in progress.
    [[nodiscard]] std::vector<TracedWrite> OnRecord();
    // Those of these writes that this keyboard may have been interrupted in, newest first: it
    // contains a part of each. There are several if indistinguishable keyboards were interrupted in
    // other writes.
    [[nodiscard]] std::vector<JournalEntry>
    Interrupted(const std::vector<TracedWrite>& writes) const {
        return m_interrupted.CutIn(writes);
    }
    // The same for all writes on record; quick if there are none.
    [[nodiscard]] std::vector<JournalEntry> Interrupted();
    // Makes the keyboard hold all new, or all old, bytes of that write, and verifies it. Throws
    // like Write; until it succeeds it can be repeated, either way. Throws Error(KeyboardChanged)
    // and does nothing if the keyboard does not contain a part of the write, because it may be
    // another one. If it may also have been interrupted in others and the user has not named this
    // one: throws Error(WriteInterrupted), unless all of them lead to the same contents; then the
    // record is kept, because it may be another keyboard's.
    Outcome Recover(const JournalEntry& entry, Way way, bool isNamed = false);

    // Runs an operation that itself writes to the keyboard, such as the driver's loading of a file:
    // after a backup (unless it writes to a memory other than the keyboard's), with a receipt, and
    // without verification. Throws like Write.
    Outcome RunUnproved(const Request& request, const std::function<void()>& operation);

    [[nodiscard]] const WriteRecords& Records() const { return m_records; }

private:
    void ProveNothingToDo(const WritePlan& plan);
    [[nodiscard]] std::vector<JournalEntry> CutIn(const KeyboardContent& now,
                                                  const InterruptedWrites::ClaimNames& own) const;
    // Called immediately before the first byte.
    void CheckBeforeWriting(const KeyboardContent& planned);
    // The same, and puts the bytes into the driver's image.
    void Prepare(const WritePlan& plan, const std::vector<ByteRange>& ranges);
    void SaveBackup(Recording& recording);
    [[nodiscard]] Recording NewRecording(const Request& request, const KeyboardContent& before,
                                         const Till& till) const;
    [[nodiscard]] Sent Send(const WritePlan& plan, const std::vector<ByteRange>& ranges,
                            bool verify);
    // Sends the ranges of the plan, for an entry found in the keyboard.
    Outcome End(const JournalEntry& entry, Way way, const WritePlan& plan,
                const KeyboardContent& now, bool isRecordKept);

    Session& m_session;
    Options m_options;
    WriteRecords m_records;
    InterruptedWrites m_interrupted;
    std::unique_ptr<Configuration> m_scratch;
};

} // namespace qx::host
