// Recording: what is put on record of one write, in this order: a backup, the journal's entry, and
// a receipt of whatever came of it.
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

// What is to be written, as records name it.
struct WriteRequest {
    static constexpr const char* kRestore = "restore"; // settles what was interrupted
    std::string action = "download";
    std::string document;       // the name of what is written, for people
    std::string documentSha256; // may be empty
    bool full = false;          // send what the control contract requests, changed or not
    bool verify = true;
    bool isOfKeyboard = true; // of RunUnproved: it changes what backups save
};

// Whose write it is.
struct Recorder {
    const WriteRecords& records;
    Clock now;
    // How the keyboard is reached, the same each time.
    std::string origin;
    Till till; // which one it is, where that is known
};

class Recording {
public:
    // Of a write to the keyboard that holds this, which outlives the recording.
    Recording(Recorder recorder, const WriteRequest& request, const KeyboardContent& before);

    // Saves what the keyboard holds. `scratch` is a configuration for it. Throws
    // Error(FileFailed), as Begin does.
    void SaveBackup(Configuration& scratch);
    // Records that the ranges are about to be written. If just one write is `replaced`, this one
    // settles it.
    void Begin(const std::vector<ByteRange>& ranges, const std::vector<JournalEntry>& replaced);
    // In place of Begin: the write makes an end of this entry, which goes when that is proved,
    // unless it is to stay.
    void Continue(const JournalEntry& entry, bool ends);

    // The failure of the sending, after its receipt.
    [[nodiscard]] Error Failed(const Sent& sent);
    // Leaves the receipt, and ends the entry, with those that it settles where the write is proved.
    // Throws Error(FileFailed) when that cannot be done.
    void Close(const Sent& sent);
    // The same of an operation that cannot be proved. Throws its failure, if there is one.
    void CloseUnproved(std::optional<Error> failure);

    [[nodiscard]] const std::string& Backup() const { return m_receipt.backup; }

private:
    void LeaveReceipt(std::vector<Error>& failures);
    void EndEntry(std::vector<Error>& failures);
    void EndReplaced() const;

    Recorder m_recorder;
    const KeyboardContent& m_before;
    bool m_isProved; // when it succeeds
    Receipt m_receipt;
    std::optional<JournalEntry> m_entry;
    bool m_hasBegun = false; // the entry is this write's own
    bool m_ends = false;     // the entry
};

} // namespace qx::host
