// Error: what went wrong, as data.
//
// An error names its cause and carries the facts of it. Nothing in it is worded: ErrorText puts it
// into English, and the application into the language of its user. Only the texts of the operating
// system, of drivers and of the control library are passed on.
#pragma once

#include "files/Problem.h"
#include "host/SettingName.h"
#include "host/VisibleText.h"
#include "host/WriteCodes.h"
#include "qxcontrols/common/Types.h"
#include "json/Fault.h"

#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

using json::Fault;
using json::FaultKind;

enum class ErrorKind {
    Usage,             // an argument names something that does not exist
    KeyboardNotOpened, // no driver, no keyboard, or its start-up failed
    TransferFailed,    // a driver call of a transfer, a mode or a file operation failed
    FileFailed,        // a file could not be read or written
    ReadBackDiffers,   // the keyboard does not hold what was written
    KeyboardChanged,   // the keyboard is not, or does not hold, what a write was planned for
    KeyboardDamaged,   // a block of the keyboard cannot be understood, and is not to be replaced
    KeyboardBusy,      // another program is writing to the keyboard
    Stopped,           // the user stopped it before anything was written
    WriteInterrupted,  // an earlier write to this keyboard is to be finished or rolled back first
    DocumentInvalid,   // a configuration document cannot be used
    LayoutInvalid,     // a keyboard layout cannot be used
    ModelInvalid,      // the model of a simulated keyboard cannot be used
};

// Each distinct thing that can go wrong, with the facts that it has besides a place and a failed
// call.
enum class Cause {
    // Usage
    WrongUsage,            // reason: in the words of the command line
    NoSuchBackup,          // name: its id
    NoSuchWrite,           // on record. name: its id
    WriteToForgetUnclear,  // writes: those that may be meant
    NoSuchUnit,            // of the job, which is the file. name
    DriverTakesNoKeyboard, // the file is a driver library, not a simulated keyboard
    KeyboardOfOtherModel,  // in the file. name: its model; other: the wanted one
    SheetFormatUnknown,    // of the file. names: the known suffixes

    // KeyboardNotOpened
    NoKeyboardConnected,
    OpeningFailed,  // the start-up's call, or problem
    NoDirectory,    // the keyboard has no configuration directory
    DriverUnusable, // problem: why the library could not be loaded, or no longer answers
    KeyboardFileMissing,
    KeyboardFileRefused, // by a simulated keyboard

    // ModelInvalid
    ModelUnusable, // faults, or problem, or a call

    // LayoutInvalid
    LayoutUnusable, // the file. faults; index: the line of the first, or 0
    NoSuchLayout,   // in the folder. name; names: those that are there

    // TransferFailed; the first ones have a call, or the problem for which the driver is gone
    ReadingFailed,
    WritingFailed,
    ReadBackFailed, // after a write that seemed to succeed. related: why
    FileNotSaved,   // keyboard to file. keyboardFile
    FileNotLoaded,  // file to keyboard. keyboardFile
    FileNotConverted,
    CodePageNotRead,
    LayerNotSelected,
    PositionModeNotEntered,
    PositionModeNotLeft,
    KeysNotAsked,     // by the sequence editor
    DirectoryGone,    // the keyboard has no configuration directory any more
    NothingMoved,     // the driver reported success and moved nothing to the address
    NothingSaved,     // the driver reported success and wrote nothing into the file
    NoPlaceInBlock,   // a setting has no place in its block
    SectionUnknown,   // where the keyboard has it. setting: the whole section; related: the hole of
                      // its directory
    KeyboardUnknown,  // which one it is. related: the hole of its directory
    NoLayers,         // the keyboard has no layered function keys
    UnitProcessEnded, // problem: how the process ended that programmed it
    Unforeseen,       // problem
    // Warnings of the start-up, which does without.
    EntriesUnreadable,      // of the directory. count; index: of the first
    AddressImpossible,      // in the directory. name: the module
    NamesUnreadable,        // of the keyboard
    CapabilitiesUnreadable, // of the keyboard, which count as absent

    // FileFailed
    FileUnusable,           // problem
    RecordDamaged,          // faults
    EntryDamaged,           // it may be of an interrupted write to this keyboard. related: why
    ReportDamaged,          // it shows which keyboards are done. related: why
    NotRecorded,            // the write, which is proved. related: what could not be recorded
    UnprovedNotRecorded,    // the same of a write that was not read back
    LoadNotRecorded,        // the same of a file that was loaded into the keyboard
    EntryNotEnded,          // the journal entry could not be deleted. related: why
    NoReceipt,              // related: why
    CaptionsUnusable,       // the file with names of options, which is skipped. faults
    NotACodePage,           // count: its bytes; expected: those that are needed
    NameNotForDriver,       // the driver's character set does not have all of its letters
    PreferencesNotStored,   // problem
    PreferencesNotAFile,    // it is not an ordinary file
    PreferencesElsewhere,   // the file holds something else
    PreferencesNotSetAside, // they are damaged. problem
    PreferenceNotStored,    // name
    NoPreferencesFolder,    // problem
    UnsavedWorkDamaged,
    JobBusy,      // another batch is working on the job
    OutputLost,   // standard output could not be written
    InputEndless, // standard input. count: the most bytes
    SheetNotMade, // reason: why its module cannot be used

    // ReadBackDiffers
    ReadBackDiffers, // count: bytes; found, expected: the first; setting: its own, if any

    // KeyboardChanged
    OtherKeyboard,          // than the one that the write was planned for
    ContentsChanged,        // since the write was planned
    BackupOfOtherModules,   // name: its keyboard; other: this one
    BackupReachedOtherwise, // of another keyboard, or reached in another way. names: its units
    BackupOfUnit,           // names; no record shows which unit this keyboard is
    BackupOfOtherUnit,      // names: its units; others: those of this keyboard
    WriteResolved,          // by somebody else meanwhile
    HoldsOldOfWrite,        // the keyboard holds exactly what was there before it. writes
    HoldsNewOfWrite,        // the keyboard holds all of it. writes
    HoldsNothingOfWrite,    // writes
    NotTheUnit,             // name: its identifier; other: the wanted one
    // Warnings before a write of the document, which is the file.
    IdentifierReplaced, // the keyboard gets that of another one
    IdentifierGiven,    // the keyboard has none yet
    IdentifierLeftOut,  // name: it would be that of several units, and each keyboard keeps its own
    // Warnings of a batch.
    WriteRolledBack, // writes: it was interrupted
    ControlReported, // reason: the text of a control's message box

    KeyboardDamaged, // faults
    KeyboardBusy,    // or one of its kind that cannot be distinguished from it
    WriteInProgress, // writes
    Stopped,         // by the user

    // WriteInterrupted
    WriteInterrupted,  // writes: the one that is to be finished or rolled back first
    WritesInterrupted, // writes: several, which lead to different contents

    // DocumentInvalid
    DocumentFaults, // faults
    JobFaults,      // faults; no keyboard was touched
    SectionsAbsent, // faults: the sections of the document that the keyboard lacks
};

[[nodiscard]] constexpr Cause LastOf(Cause) {
    return Cause::SectionsAbsent;
}

// What of the keyboard is kept in files of the driver.
enum class KeyboardFile { Rom, ChipcardRom, Parameter };
[[nodiscard]] constexpr KeyboardFile LastOf(KeyboardFile) {
    return KeyboardFile::Parameter;
}

// The keyboard's contents after a failed write.
enum class Holds {
    NotTouched,    // what it held before: nothing was sent
    Old,           // what it held before, as read back
    New,           // everything that was to be written
    PartlyWritten, // neither
    Unknown,       // it could not be read, or was not
};
[[nodiscard]] constexpr Holds LastOf(Holds) {
    return Holds::Unknown;
}

// A suggestion to the user.
enum class Suggestion {
    None,
    Recover,            // the interrupted write
    NameWrite,          // of several interrupted ones
    RestoreBackup,      // the one that the error names
    ReadAgain,          // the keyboard, and plan the write anew
    TryLater,           // when the other program is done
    Repair,             // replace what is damaged
    SkipAbsent,         // leave out what the keyboard lacks
    GiveVariables,      // values for the placeholders of the document
    ChooseDriver,       // another one, or another keyboard
    ChooseModel,        // of the keyboard that is to be made
    LeaveOutKeyboard,   // and its model: the driver does not accept any
    LeaveOutIdentifier, // in documents for several keyboards
    MoveFileAway,       // when its contents have been dealt with
};
[[nodiscard]] constexpr Suggestion LastOf(Suggestion) {
    return Suggestion::MoveFileAway;
}

// Their names for programs, "transfer-failed", "no-such-backup", "rom", "partly-written",
// "restore-backup"; the empty text for no suggestion.
[[nodiscard]] std::string_view CodeOf(ErrorKind kind);
[[nodiscard]] std::string_view CodeOf(Cause cause);
[[nodiscard]] std::string_view CodeOf(KeyboardFile file); // as commands call it
[[nodiscard]] std::string_view CodeOf(Holds holds);
[[nodiscard]] std::string_view CodeOf(Suggestion suggestion);

[[nodiscard]] ErrorKind KindOf(Cause cause);

// Whether the text of the cause itself shows what the keyboard holds, so that no other sentence
// does.
[[nodiscard]] bool ShowsWhatIsHeld(Cause cause);

// A call of the driver that failed.
struct FailedCall {
    std::string function{};
    Long status = 0;
    std::string meaning{}; // of the status, as the driver words it; may be empty

    bool operator==(const FailedCall&) const = default;
};

// Where; each part is there as far as it is known.
struct ErrorPlace {
    std::string file{};            // or a folder, or a document's name
    std::string pointer{};         // into a document, a JSON pointer; else that of the first fault
    std::string section{};         // the key of a section
    std::optional<Long> address{}; // in the keyboard's memory

    bool operator==(const ErrorPlace&) const = default;
};

// A write on record, as it is named to people.
struct WriteName {
    std::string id{};
    WriteAction action = WriteAction::Download;
    std::string document{}; // its name; empty for an untitled one
    std::string unit{};     // to which unit of a job; may be empty
    std::string time{};     // of its beginning

    bool operator==(const WriteName&) const = default;
};

struct ErrorFacts {
    std::string name{};
    std::string other{};
    SettingName setting{};
    std::vector<std::string> names{};
    std::vector<std::string> others{};
    std::string reason{};     // a text of a layer that gives no data; see Cause
    files::Problem problem{}; // of a file, a program or a library; also why the call failed
    std::int64_t count = 0;
    Long index = 0;
    Long found = 0;
    Long expected = 0;
    std::optional<FailedCall> call{};
    bool isSimulated = false; // the call's status is one of the simulated keyboard: sim::Status
    std::optional<KeyboardFile> keyboardFile{};
    ErrorPlace place{};
    std::optional<Holds> holds{}; // only if a write failed
    std::string backup{};         // the id of the backup of the previous contents
    std::vector<WriteName> writes{};
    std::vector<Fault> faults{}; // of a file

    bool operator==(const ErrorFacts&) const = default;
};

class Error : public std::exception, public ErrorFacts {
public:
    explicit Error(Cause cause, ErrorFacts facts = {}, std::vector<Error> because = {});

    [[nodiscard]] Cause Why() const { return m_cause; }
    [[nodiscard]] ErrorKind Kind() const { return KindOf(m_cause); }
    // The driver's own.
    [[nodiscard]] std::optional<Long> Status() const {
        return call ? std::optional(call->status) : std::nullopt;
    }
    // Whether all facts are the same.
    bool operator==(const Error& other) const;
    // The code of its kind, for debuggers.
    [[nodiscard]] const char* what() const noexcept override { return CodeOf(Kind()).data(); }

    Suggestion suggestion; // initially that of the cause
    // The errors that caused it, or occurred with it: see Cause.
    std::vector<Error> related;

private:
    Cause m_cause;
};

// A document that has faults.
[[nodiscard]] inline Error FaultsOf(const std::string& document, const json::FaultError& error) {
    return Error(Cause::DocumentFaults, {.place = {.file = document}, .faults = error.Faults()});
}

// A problem with a file, as an exception.
[[nodiscard]] Error FileError(const std::exception& reason);

} // namespace qx::host
