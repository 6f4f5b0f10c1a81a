// Recording: the records of one write, in this order: a backup, the journal's entry, and a receipt,
// whatever the result.
#pragma once

#include "host/Configuration.h"
#include "host/Error.h"
#include "host/Sending.h"
#include "host/Till.h"
#include "host/WriteRecords.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::host {

// The write as described in records.
struct WriteRequest {
    WriteAction action = WriteAction::Download;
    std::string document;       // the name of the document, for people
    std::string documentSha256; // may be empty
    bool full = false;          // send everything the control contract requests, changed or not
    bool verify = true;
    bool isOfKeyboard = true; // for RunUnproved: it changes contents that backups include
};

// Where and for whom a write is recorded.
struct Recorder {
    const WriteRecords& records;
    Clock now;
    // The keyboard's connection, the same each time.
    std::string origin;
    Till till; // which one it is, if known
};

class Recording {
public:
    // For a write to the keyboard with these contents, which must outlive the recording.
    Recording(Recorder recorder, const WriteRequest& request, const KeyboardContent& before);

    // Saves the keyboard's contents. `scratch` is a configuration for it. Throws Error(FileFailed),
    // like Begin.
    void SaveBackup(Configuration& scratch);
    // Records that the ranges are about to be written. If exactly one write is `replaced`, this one
    // resolves it.
    void Begin(const std::vector<ByteRange>& ranges, const std::vector<JournalEntry>& replaced);
    // Instead of Begin: the write completes this entry, which is deleted once that is verified if
    // `ends` is true.
    void Continue(const JournalEntry& entry, bool ends);

    // Deletes the entry, since nothing is going to be sent.
    void Withdraw(std::vector<Error>& failures) { EndEntry(failures); }
    // The error for a failed sending, after writing its receipt.
    [[nodiscard]] Error Failed(const Sent& sent);
    // Writes the receipt and deletes the entry, and if the write is verified, also the entries it
    // resolves. Throws Error(FileFailed) if that fails.
    void Close(const Sent& sent);
    // The same for an operation that cannot be verified. Throws its failure, if there is one.
    void CloseUnproved(std::optional<Error> failure);

    [[nodiscard]] const std::string& Backup() const { return m_receipt.backup; }

private:
    void LeaveReceipt(std::vector<Error>& failures);
    void EndEntry(std::vector<Error>& failures);
    void EndReplaced() const;

    Recorder m_recorder;
    const KeyboardContent& m_before;
    bool m_isProved; // if it succeeds
    Receipt m_receipt;
    std::optional<JournalEntry> m_entry;
    bool m_ends = false; // deletes the entry when verified
};

} // namespace qx::host
