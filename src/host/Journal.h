// Journal: the writes that have begun and are not known to have ended.
//
// An entry is on the disk before the first byte is sent. It goes when the write has been proved, or
// nothing was sent, or the user says so; until then it is known which bytes a crash or a pulled
// cable may have left: in each range the old ones, the new ones, or some of each. Only some of each
// show which keyboard it was: one that holds just the old or just the new ones may be another.
//
// A write goes in this order, as Writer does:
// 1. The claim of the keyboard (Claims). It is kept until the end; while another program has it,
//    nothing is written.
// 2. Entries, of which those that the keyboard shows traces of (TraceIn) are settled first, or are
//    named in `replaced` where this write overwrites their traces.
// 3. Begin. Where it throws, nothing may be sent.
// 4. End, when nothing was sent, or all of it and nothing that was read back contradicts; for the
//    entries in `replaced` only when reading back has proved the write. After any other end the
//    entry stays for a recovery.
#pragma once

#include "host/KeyboardContent.h"
#include "host/RecordFiles.h"
#include "host/Till.h"

#include <filesystem>
#include <string>
#include <vector>

namespace qx::host {

// What a keyboard shows of a write that has not ended.
enum class Trace {
    None,    // it is of another kind, or holds what that write cannot have left
    Before,  // exactly what the written keyboard held before; many may
    After,   // exactly what the write leads to; many may
    Partial, // some old and some new bytes, which only that write leaves
};

// How an interrupted write is made an end of.
enum class RecoverWay { Finish, RollBack };

struct JournalEntry {
    std::string time;     // of the beginning
    std::string action;   // "download"
    std::string document; // the name of what is written
    std::string backup;   // the id of the backup made before
    std::string origin;   // how the keyboard was reached
    Till till;
    KeyboardIdentity keyboard; // before the write
    std::vector<ByteRange> ranges;
    std::vector<ContentPiece> areas; // all that were read before the write; without their bytes
    std::string restHash;            // of all bytes outside the ranges
    // The ids of interrupted writes whose traces this one replaces: it settles them when it is
    // proved.
    std::vector<std::string> replaced;

    std::filesystem::path file; // where it is kept

    // Its name, by which it can be forgotten.
    [[nodiscard]] std::string Id() const;
    // As it is named to people.
    [[nodiscard]] WriteName Name() const;

    // Whether the other one led from the same contents to the same contents.
    [[nodiscard]] bool IsAlike(const JournalEntry& other) const;
    // What a keyboard that holds this shows of the write.
    [[nodiscard]] Trace TraceIn(const KeyboardContent& now) const;
    // The areas, to be read again: another layout may have others.
    [[nodiscard]] bool HasAreasOf(const KeyboardContent& now) const;
    [[nodiscard]] KeyboardContent Areas() const;
    // The trace by the bytes of the ranges alone.
    [[nodiscard]] Trace TraceInRanges(const KeyboardContent& now) const;
    // The content with the old, or the new, bytes in the ranges.
    [[nodiscard]] KeyboardContent RolledBack(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Finished(KeyboardContent content) const;
    [[nodiscard]] KeyboardContent Ended(RecoverWay way, const KeyboardContent& now) const;
    // The hash of all bytes of the content outside the ranges.
    [[nodiscard]] std::string RestHashOf(KeyboardContent content) const;
};

class Journal {
public:
    explicit Journal(std::filesystem::path folder) : m_folder(std::move(folder)) {}

    // Records the write; keyboard, rest and time are set by this. The entry is on the disk when
    // this returns.
    void Begin(JournalEntry& entry, const KeyboardContent& before, Time time) const;
    void End(const JournalEntry& entry) const { RemoveRecord(entry.file); }

    // The writes that have not ended, oldest first. Entries that cannot be used are added to
    // `damaged`.
    [[nodiscard]] std::vector<JournalEntry>
    Entries(std::vector<DamagedRecord>* damaged = nullptr) const;
    // The one of this id. Throws Error(Usage) when there is none.
    [[nodiscard]] JournalEntry Find(const std::string& id) const;
    // Whether a damaged entry may be of this keyboard.
    [[nodiscard]] static bool MayBeOf(const DamagedRecord& damaged,
                                      const KeyboardIdentity& keyboard);

private:
    std::filesystem::path m_folder;
};

} // namespace qx::host
