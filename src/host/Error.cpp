#include "host/Error.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qx::host {

namespace {

struct CauseRow {
    Cause cause;
    std::string_view code;
    ErrorKind kind;
    Suggestion suggestion = Suggestion::None; // of most errors of the cause
};
// In the order of the causes.
constexpr CauseRow kCauses[] = {
    {Cause::WrongUsage, "wrong-usage", ErrorKind::Usage},
    {Cause::NoSuchBackup, "no-such-backup", ErrorKind::Usage},
    {Cause::NoSuchWrite, "no-such-write", ErrorKind::Usage},
    {Cause::WriteToForgetUnclear, "write-to-forget-unclear", ErrorKind::Usage,
     Suggestion::NameWrite},
    {Cause::NoSuchUnit, "no-such-unit", ErrorKind::Usage},
    {Cause::DriverTakesNoKeyboard, "driver-takes-no-keyboard", ErrorKind::Usage,
     Suggestion::LeaveOutKeyboard},
    {Cause::KeyboardOfOtherModel, "keyboard-of-other-model", ErrorKind::Usage},
    {Cause::SheetFormatUnknown, "sheet-format-unknown", ErrorKind::Usage},
    {Cause::NoKeyboardConnected, "no-keyboard-connected", ErrorKind::KeyboardNotOpened,
     Suggestion::ChooseDriver},
    {Cause::OpeningFailed, "opening-failed", ErrorKind::KeyboardNotOpened,
     Suggestion::ChooseDriver},
    {Cause::NoDirectory, "no-directory", ErrorKind::KeyboardNotOpened, Suggestion::ChooseDriver},
    {Cause::DriverUnusable, "driver-unusable", ErrorKind::KeyboardNotOpened,
     Suggestion::ChooseDriver},
    {Cause::KeyboardFileMissing, "keyboard-file-missing", ErrorKind::KeyboardNotOpened,
     Suggestion::ChooseModel},
    {Cause::KeyboardFileRefused, "keyboard-file-refused", ErrorKind::KeyboardNotOpened},
    {Cause::ModelUnusable, "model-unusable", ErrorKind::ModelInvalid},
    {Cause::LayoutUnusable, "layout-unusable", ErrorKind::LayoutInvalid},
    {Cause::NoSuchLayout, "no-such-layout", ErrorKind::LayoutInvalid},
    {Cause::ReadingFailed, "reading-failed", ErrorKind::TransferFailed},
    {Cause::WritingFailed, "writing-failed", ErrorKind::TransferFailed},
    {Cause::ReadBackFailed, "read-back-failed", ErrorKind::TransferFailed},
    {Cause::FileNotSaved, "file-not-saved", ErrorKind::TransferFailed},
    {Cause::FileNotLoaded, "file-not-loaded", ErrorKind::TransferFailed},
    {Cause::FileNotConverted, "file-not-converted", ErrorKind::TransferFailed},
    {Cause::CodePageNotRead, "code-page-not-read", ErrorKind::TransferFailed},
    {Cause::LayerNotSelected, "layer-not-selected", ErrorKind::TransferFailed},
    {Cause::PositionModeNotEntered, "position-mode-not-entered", ErrorKind::TransferFailed},
    {Cause::PositionModeNotLeft, "position-mode-not-left", ErrorKind::TransferFailed},
    {Cause::KeysNotAsked, "keys-not-asked", ErrorKind::TransferFailed},
    {Cause::DirectoryGone, "directory-gone", ErrorKind::TransferFailed},
    {Cause::NothingMoved, "nothing-moved", ErrorKind::TransferFailed},
    {Cause::NothingSaved, "nothing-saved", ErrorKind::TransferFailed},
    {Cause::NoPlaceInBlock, "no-place-in-block", ErrorKind::TransferFailed},
    {Cause::SectionUnknown, "section-unknown", ErrorKind::TransferFailed},
    {Cause::KeyboardUnknown, "keyboard-unknown", ErrorKind::TransferFailed},
    {Cause::NoLayers, "no-layers", ErrorKind::TransferFailed},
    {Cause::UnitProcessEnded, "unit-process-ended", ErrorKind::TransferFailed},
    {Cause::Unforeseen, "unforeseen", ErrorKind::TransferFailed},
    {Cause::EntriesUnreadable, "entries-unreadable", ErrorKind::TransferFailed},
    {Cause::AddressImpossible, "address-impossible", ErrorKind::TransferFailed},
    {Cause::NamesUnreadable, "names-unreadable", ErrorKind::TransferFailed},
    {Cause::CapabilitiesUnreadable, "capabilities-unreadable", ErrorKind::TransferFailed},
    {Cause::FileUnusable, "file-unusable", ErrorKind::FileFailed},
    {Cause::RecordDamaged, "record-damaged", ErrorKind::FileFailed},
    {Cause::EntryDamaged, "entry-damaged", ErrorKind::FileFailed, Suggestion::MoveFileAway},
    {Cause::ReportDamaged, "report-damaged", ErrorKind::FileFailed, Suggestion::MoveFileAway},
    {Cause::NotRecorded, "not-recorded", ErrorKind::FileFailed},
    {Cause::UnprovedNotRecorded, "unproved-not-recorded", ErrorKind::FileFailed},
    {Cause::LoadNotRecorded, "load-not-recorded", ErrorKind::FileFailed},
    {Cause::EntryNotEnded, "entry-not-ended", ErrorKind::FileFailed},
    {Cause::NoReceipt, "no-receipt", ErrorKind::FileFailed},
    {Cause::CaptionsUnusable, "captions-unusable", ErrorKind::FileFailed},
    {Cause::NotACodePage, "not-a-code-page", ErrorKind::FileFailed},
    {Cause::NameNotForDriver, "name-not-for-driver", ErrorKind::FileFailed},
    {Cause::PreferencesNotStored, "preferences-not-stored", ErrorKind::FileFailed},
    {Cause::PreferencesNotAFile, "preferences-not-a-file", ErrorKind::FileFailed},
    {Cause::PreferencesElsewhere, "preferences-elsewhere", ErrorKind::FileFailed},
    {Cause::PreferencesNotSetAside, "preferences-not-set-aside", ErrorKind::FileFailed},
    {Cause::PreferenceNotStored, "preference-not-stored", ErrorKind::FileFailed},
    {Cause::NoPreferencesFolder, "no-preferences-folder", ErrorKind::FileFailed},
    {Cause::UnsavedWorkDamaged, "unsaved-work-damaged", ErrorKind::FileFailed},
    {Cause::JobBusy, "job-busy", ErrorKind::FileFailed, Suggestion::TryLater},
    {Cause::OutputLost, "output-lost", ErrorKind::FileFailed},
    {Cause::InputEndless, "input-endless", ErrorKind::FileFailed},
    {Cause::SheetNotMade, "sheet-not-made", ErrorKind::FileFailed},
    {Cause::ReadBackDiffers, "read-back-differs", ErrorKind::ReadBackDiffers},
    {Cause::OtherKeyboard, "other-keyboard", ErrorKind::KeyboardChanged, Suggestion::ReadAgain},
    {Cause::ContentsChanged, "contents-changed", ErrorKind::KeyboardChanged, Suggestion::ReadAgain},
    {Cause::BackupOfOtherModules, "backup-of-other-modules", ErrorKind::KeyboardChanged},
    {Cause::BackupReachedOtherwise, "backup-reached-otherwise", ErrorKind::KeyboardChanged},
    {Cause::BackupOfUnit, "backup-of-unit", ErrorKind::KeyboardChanged},
    {Cause::BackupOfOtherUnit, "backup-of-other-unit", ErrorKind::KeyboardChanged},
    {Cause::WriteResolved, "write-resolved", ErrorKind::KeyboardChanged},
    {Cause::HoldsOldOfWrite, "holds-old-of-write", ErrorKind::KeyboardChanged},
    {Cause::HoldsNewOfWrite, "holds-new-of-write", ErrorKind::KeyboardChanged},
    {Cause::HoldsNothingOfWrite, "holds-nothing-of-write", ErrorKind::KeyboardChanged},
    {Cause::NotTheUnit, "not-the-unit", ErrorKind::KeyboardChanged},
    {Cause::IdentifierReplaced, "identifier-replaced", ErrorKind::KeyboardChanged,
     Suggestion::LeaveOutIdentifier},
    {Cause::IdentifierGiven, "identifier-given", ErrorKind::KeyboardChanged,
     Suggestion::LeaveOutIdentifier},
    {Cause::IdentifierLeftOut, "identifier-left-out", ErrorKind::KeyboardChanged},
    {Cause::WriteRolledBack, "write-rolled-back", ErrorKind::KeyboardChanged},
    {Cause::ControlReported, "control-reported", ErrorKind::TransferFailed},
    {Cause::KeyboardDamaged, "keyboard-damaged", ErrorKind::KeyboardDamaged, Suggestion::Repair},
    {Cause::KeyboardBusy, "keyboard-busy", ErrorKind::KeyboardBusy, Suggestion::TryLater},
    {Cause::WriteInProgress, "write-in-progress", ErrorKind::KeyboardBusy, Suggestion::TryLater},
    {Cause::Stopped, "stopped", ErrorKind::Stopped},
    {Cause::WriteInterrupted, "write-interrupted", ErrorKind::WriteInterrupted,
     Suggestion::Recover},
    {Cause::WritesInterrupted, "writes-interrupted", ErrorKind::WriteInterrupted,
     Suggestion::Recover},
    {Cause::DocumentFaults, "document-faults", ErrorKind::DocumentInvalid},
    {Cause::JobFaults, "job-faults", ErrorKind::DocumentInvalid},
    {Cause::SectionsAbsent, "sections-absent", ErrorKind::DocumentInvalid, Suggestion::SkipAbsent},
};
static_assert([] {
    std::size_t i = 0;
    for (const CauseRow& row : kCauses)
        if (row.cause != static_cast<Cause>(i++))
            return false;
    return kCauses[std::size(kCauses) - 1].cause == LastOf(Cause());
}());

const CauseRow& RowOf(Cause cause) {
    return kCauses[static_cast<std::size_t>(cause)];
}

} // namespace

std::string_view CodeOf(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Usage:
        return "usage";
    case ErrorKind::KeyboardNotOpened:
        return "keyboard-not-opened";
    case ErrorKind::TransferFailed:
        return "transfer-failed";
    case ErrorKind::FileFailed:
        return "file-failed";
    case ErrorKind::ReadBackDiffers:
        return "read-back-differs";
    case ErrorKind::KeyboardChanged:
        return "keyboard-changed";
    case ErrorKind::KeyboardDamaged:
        return "keyboard-damaged";
    case ErrorKind::KeyboardBusy:
        return "keyboard-busy";
    case ErrorKind::Stopped:
        return "stopped";
    case ErrorKind::WriteInterrupted:
        return "write-interrupted";
    case ErrorKind::DocumentInvalid:
        return "document-invalid";
    case ErrorKind::LayoutInvalid:
        return "layout-invalid";
    case ErrorKind::ModelInvalid:
        return "model-invalid";
    }
    return "";
}

std::string_view CodeOf(KeyboardFile file) {
    switch (file) {
    case KeyboardFile::Rom:
        return "rom";
    case KeyboardFile::ChipcardRom:
        return "chipcard";
    case KeyboardFile::Parameter:
        return "param";
    }
    return "";
}

std::string_view CodeOf(Holds holds) {
    switch (holds) {
    case Holds::NotTouched:
        return "not-touched";
    case Holds::Old:
        return "old";
    case Holds::New:
        return "new";
    case Holds::PartlyWritten:
        return "partly-written";
    case Holds::Unknown:
        return "unknown";
    }
    return "";
}

std::string_view CodeOf(Suggestion suggestion) {
    switch (suggestion) {
    case Suggestion::None:
        return "";
    case Suggestion::Recover:
        return "recover";
    case Suggestion::NameWrite:
        return "name-write";
    case Suggestion::RestoreBackup:
        return "restore-backup";
    case Suggestion::ReadAgain:
        return "read-again";
    case Suggestion::TryLater:
        return "try-later";
    case Suggestion::Repair:
        return "repair";
    case Suggestion::SkipAbsent:
        return "skip-absent";
    case Suggestion::GiveVariables:
        return "give-variables";
    case Suggestion::ChooseDriver:
        return "choose-driver";
    case Suggestion::ChooseModel:
        return "choose-model";
    case Suggestion::LeaveOutKeyboard:
        return "leave-out-keyboard";
    case Suggestion::LeaveOutIdentifier:
        return "leave-out-identifier";
    case Suggestion::MoveFileAway:
        return "move-file-away";
    }
    return "";
}

std::string_view CodeOf(Cause cause) {
    return RowOf(cause).code;
}

ErrorKind KindOf(Cause cause) {
    return RowOf(cause).kind;
}

bool ShowsWhatIsHeld(Cause cause) {
    constexpr Cause kThese[] = {Cause::Stopped, Cause::NotRecorded, Cause::UnprovedNotRecorded,
                                Cause::LoadNotRecorded, Cause::UnitProcessEnded};
    return std::find(std::begin(kThese), std::end(kThese), cause) != std::end(kThese);
}

Error::Error(Cause cause, ErrorFacts facts, std::vector<Error> because)
    : ErrorFacts(std::move(facts)), suggestion(RowOf(cause).suggestion),
      related(std::move(because)), m_cause(cause) {
    if (place.pointer.empty() && !faults.empty())
        place.pointer = faults.front().place;
}

bool Error::operator==(const Error& other) const {
    return m_cause == other.m_cause && suggestion == other.suggestion && related == other.related &&
           static_cast<const ErrorFacts&>(*this) == other;
}

Error FileError(const std::exception& reason) {
    files::Problem problem = files::ProblemOf(reason);
    const std::string file = problem.subject;
    return Error(Cause::FileUnusable, {.problem = std::move(problem), .place = {.file = file}});
}

} // namespace qx::host
