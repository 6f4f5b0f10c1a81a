// Writer: writes to a keyboard so that nothing is called done that has not been proved, and nothing
// is lost that the keyboard held.
//
// A write goes: plan (WritePlan), claim (Claims), backup and journal (Recording), check that the
// keyboard is still the planned one, the bytes, reading back and comparing (Sending), end of the
// journal, receipt (Recording). Whatever breaks off between, the journal knows what the keyboard
// may hold (InterruptedWrites), and Recover makes it exactly the old or exactly the new.
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
        // How the keyboard is reached, the same each time, as setup::OpenedDriver shows it.
        std::string origin = {};
        Till till = {}; // which one it is, where that is known
        // Whether the user wants to stop. Asked before the first byte is sent; what has begun to
        // be sent is sent, proved and recorded.
        std::function<bool()> isStopped = [] { return false; };
        OnStep onStep = [](Step) {}; // must not throw
    };
    using Request = WriteRequest;
    using Way = RecoverWay;
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
    // same kind (BackupMatch). Such a keyboard keeps its own GUID. Areas that are not in the backup
    // stay as they are, and the plan shows them.
    [[nodiscard]] WritePlan PlanRestore(const Backup& backup, bool otherKeyboard = false);

    // Writes. Throws Error: KeyboardChanged when the keyboard is not as it was planned for,
    // WriteInterrupted when Recover is to come first, KeyboardBusy when another program writes to
    // it, FileFailed when there can be no record, TransferFailed, ReadBackDiffers. The error shows
    // what the keyboard holds then: all that was to be written when only the records failed. The
    // action kRestore settles what was interrupted.
    Outcome Write(const WritePlan& plan, const Request& request);

    // What the keyboard shows of the writes on record to keyboards of its kind, oldest first,
    // without those that are still going on.
    [[nodiscard]] std::vector<TracedWrite> OnRecord();
    // Those of these that this keyboard may have been cut in, the newest first: it holds a part of
    // each. There are several where other keyboards that cannot be told from it were cut in other
    // writes.
    [[nodiscard]] std::vector<JournalEntry>
    Interrupted(const std::vector<TracedWrite>& writes) const {
        return m_interrupted.CutIn(writes);
    }
    // The same of all on record; quick where there are none.
    [[nodiscard]] std::vector<JournalEntry> Interrupted();
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
    [[nodiscard]] KeyboardContent Read() { return m_session.ReadContent(*m_scratch); }
    void ProveNothingToDo(const WritePlan& plan);
    // Right before the first byte.
    void CheckBeforeWriting(const KeyboardContent& planned);
    void SaveBackup(Recording& recording);
    [[nodiscard]] Recording NewRecording(const Request& request, const KeyboardContent& before,
                                         const Till& till) const;
    [[nodiscard]] Sent Send(const WritePlan& plan, const std::vector<ByteRange>& ranges,
                            bool verify);
    // The ranges of the plan are sent by an entry that has been found in the keyboard.
    Outcome End(const JournalEntry& entry, Way way, const WritePlan& plan,
                const KeyboardContent& now, bool isRecordKept);

    Session& m_session;
    Options m_options;
    WriteRecords m_records;
    InterruptedWrites m_interrupted;
    std::unique_ptr<Configuration> m_scratch;
};

} // namespace qx::host
