// Journal: the writes that have begun and are not known to have ended.
//
// An entry is on the disk before the first byte is sent. It is deleted when the write has been
// verified, when nothing was sent, or when the user demands it; until then it is known which bytes
// a crash or a pulled cable may have left: in each range the old ones, the new ones, or a mixture.
// Only a mixture identifies the keyboard: one with only old or only new bytes may be another one.
//
// A write must follow this order, as in Writer:
// 1. Take the claim for the keyboard (Claims) and hold it until the end; while another program has
//    it, nothing may be written.
// 2. Read the Entries. Those with a trace in the keyboard (TraceIn) must be recovered first, or be
//    named in `replaced` if this write overwrites their traces.
// 3. Save a backup, whose id is in the entry. Begin; if it throws, nothing may be sent.
// 4. Read the keyboard again: if it no longer holds `before`, End, and send nothing.
// 5. End, if nothing was sent, or if everything was sent and no read-back contradicts it; for the
//    entries in `replaced` only if a read-back has verified the write. In all other cases the entry
//    stays for a recovery.
#pragma once

#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"
#include "host/Till.h"
#include "host/WriteCodes.h"

#include <filesystem>
#include <string>
#include <vector>

namespace qx::host {

// The trace of an unfinished write in a keyboard.
enum class Trace {
    None,    // another model, or contents that the write cannot have left
    Before,  // exactly the contents before the write; not unique to this keyboard
    After,   // exactly the contents after the write; not unique to this keyboard
    Partial, // a mixture of old and new bytes, which only this write leaves
};

// The ways to recover an interrupted write.
enum class RecoverWay { Finish, RollBack };

struct JournalEntry {
    std::string time; // when the write began
    WriteAction action = WriteAction::Download;
    std::string document; // the name of what is written
    std::string backup;   // the id of the backup made before
    std::string origin;   // the keyboard's connection
    Till till;
    KeyboardIdentity keyboard; // before the write
    std::vector<ByteRange> ranges;
    std::vector<ContentPiece> areas; // all areas read before the write, without their bytes
    std::string restHash;            // of all bytes outside the ranges
    // The ids of interrupted writes whose traces this one overwrites; they are resolved once this
    // one is verified.
    std::vector<std::string> replaced;

    std::filesystem::path file; // the entry's file

    // The name by which the user can forget it.
    [[nodiscard]] std::string Id() const;
    // The name displayed for it.
    [[nodiscard]] WriteName Name() const;

    // Whether the other write has the same contents before and after.
    [[nodiscard]] bool IsAlike(const JournalEntry& other) const;
    // The trace of the write in a keyboard with these contents.
    [[nodiscard]] Trace TraceIn(const KeyboardContent& now) const;
    // Whether the areas are the same; another layout may have others.
    [[nodiscard]] bool HasAreasOf(const KeyboardContent& now) const;
    [[nodiscard]] KeyboardContent Areas() const;
    // The trace according to the ranges only.
    [[nodiscard]] Trace TraceInRanges(const KeyboardContent& now) const;
    // The content with the old or the new bytes in the ranges.
    [[nodiscard]] KeyboardContent RolledBack(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Finished(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Ended(RecoverWay way, const KeyboardContent& now) const;
    // The hash of all bytes of the content outside the ranges.
    [[nodiscard]] std::string RestHashOf(KeyboardContent content) const;
};

class Journal {
public:
    explicit Journal(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Records the write; sets the entry's keyboard, rest and time. The entry is on the disk when
    // this returns.
    void Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const;
    void End(const JournalEntry& entry) const { RemoveRecord(entry.file); }

    // The unfinished writes, oldest first. Unusable entries are added to `damaged`.
    [[nodiscard]] std::vector<JournalEntry>
    Entries(std::vector<DamagedRecord>* damaged = nullptr) const;
    // The entry with this id. Throws Error(Usage) if there is none.
    [[nodiscard]] JournalEntry Find(const std::string& id) const;
    // Whether a damaged entry may belong to this keyboard.
    [[nodiscard]] static bool MayBeOf(const DamagedRecord& damaged,
                                      const KeyboardIdentity& keyboard);

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
