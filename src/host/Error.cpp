#include "host/Error.h"

#include "files/Files.h"
#include "files/SystemTexts.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qx::host {

namespace {

// What most errors of a cause suggest; for the others, nothing is known that would help.
constexpr std::pair<Cause, Suggestion> kSuggestions[] = {
    {Cause::NoKeyboardConnected, Suggestion::ChooseDriver},
    {Cause::OpeningFailed, Suggestion::ChooseDriver},
    {Cause::NoDirectory, Suggestion::ChooseDriver},
    {Cause::DriverUnusable, Suggestion::ChooseDriver},
    {Cause::KeyboardFileMissing, Suggestion::ChooseModel},
    {Cause::DriverTakesNoKeyboard, Suggestion::LeaveOutKeyboard},
    {Cause::OtherKeyboard, Suggestion::ReadAgain},
    {Cause::ContentsChanged, Suggestion::ReadAgain},
    {Cause::KeyboardBusy, Suggestion::TryLater},
    {Cause::WriteInProgress, Suggestion::TryLater},
    {Cause::JobBusy, Suggestion::TryLater},
    {Cause::KeyboardDamaged, Suggestion::Repair},
    {Cause::SectionsAbsent, Suggestion::SkipAbsent},
    {Cause::WriteInterrupted, Suggestion::Recover},
    {Cause::WritesInterrupted, Suggestion::Recover},
    {Cause::IdentifierReplaced, Suggestion::LeaveOutIdentifier},
    {Cause::IdentifierGiven, Suggestion::LeaveOutIdentifier},
    {Cause::EntryDamaged, Suggestion::MoveFileAway},
    {Cause::ReportDamaged, Suggestion::MoveFileAway},
};

Suggestion SuggestionFor(Cause cause) {
    const auto* const found = std::find_if(std::begin(kSuggestions), std::end(kSuggestions),
                                           [&](const auto& each) { return each.first == cause; });
    return found == std::end(kSuggestions) ? Suggestion::None : found->second;
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

Suggestion SuggestionOf(std::string_view code) {
    constexpr auto kLast = static_cast<int>(Suggestion::MoveFileAway);
    for (int i = 0; i <= kLast; ++i)
        if (const auto suggestion = static_cast<Suggestion>(i); CodeOf(suggestion) == code)
            return suggestion;
    return Suggestion::None;
}

ErrorKind KindOf(Cause cause) {
    switch (cause) {
    case Cause::WrongUsage:
    case Cause::NoSuchBackup:
    case Cause::NoSuchWrite:
    case Cause::WriteToForgetUnclear:
    case Cause::NoSuchUnit:
    case Cause::DriverTakesNoKeyboard:
    case Cause::KeyboardOfOtherModel:
    case Cause::SheetFormatUnknown:
        return ErrorKind::Usage;
    case Cause::NoKeyboardConnected:
    case Cause::OpeningFailed:
    case Cause::NoDirectory:
    case Cause::DriverUnusable:
    case Cause::KeyboardFileMissing:
    case Cause::KeyboardFileRefused:
        return ErrorKind::KeyboardNotOpened;
    case Cause::ModelUnusable:
        return ErrorKind::ModelInvalid;
    case Cause::LayoutUnusable:
    case Cause::NoSuchLayout:
        return ErrorKind::LayoutInvalid;
    case Cause::ReadingFailed:
    case Cause::WritingFailed:
    case Cause::ReadBackFailed:
    case Cause::FileNotSaved:
    case Cause::FileNotLoaded:
    case Cause::FileNotConverted:
    case Cause::CodePageNotRead:
    case Cause::LayerNotSelected:
    case Cause::PositionModeNotEntered:
    case Cause::PositionModeNotLeft:
    case Cause::KeysNotAsked:
    case Cause::DirectoryGone:
    case Cause::NothingMoved:
    case Cause::NothingSaved:
    case Cause::NoPlaceInBlock:
    case Cause::SectionUnknown:
    case Cause::KeyboardUnknown:
    case Cause::NoLayers:
    case Cause::UnitProcessEnded:
    case Cause::Unforeseen:
    case Cause::EntriesUnreadable:
    case Cause::AddressImpossible:
    case Cause::NamesUnreadable:
    case Cause::AbilitiesUnreadable:
        return ErrorKind::TransferFailed;
    case Cause::FileUnusable:
    case Cause::RecordDamaged:
    case Cause::EntryDamaged:
    case Cause::ReportDamaged:
    case Cause::NotRecorded:
    case Cause::UnprovedNotRecorded:
    case Cause::LoadNotRecorded:
    case Cause::EntryNotEnded:
    case Cause::NoReceipt:
    case Cause::NotACodePage:
    case Cause::NameNotForDriver:
    case Cause::PreferencesNotStored:
    case Cause::PreferencesNotAFile:
    case Cause::PreferencesElsewhere:
    case Cause::PreferencesNotSetAside:
    case Cause::PreferenceNotStored:
    case Cause::NoPreferencesFolder:
    case Cause::UnsavedWorkDamaged:
    case Cause::JobBusy:
    case Cause::OutputLost:
    case Cause::InputEndless:
    case Cause::SheetNotMade:
        return ErrorKind::FileFailed;
    case Cause::ReadBackDiffers:
        return ErrorKind::ReadBackDiffers;
    case Cause::OtherKeyboard:
    case Cause::ContentsChanged:
    case Cause::BackupOfOtherModules:
    case Cause::BackupReachedOtherwise:
    case Cause::BackupOfUnit:
    case Cause::BackupOfOtherUnit:
    case Cause::WriteSettled:
    case Cause::HoldsOldOfWrite:
    case Cause::HoldsNewOfWrite:
    case Cause::HoldsNothingOfWrite:
    case Cause::NotTheUnit:
    case Cause::IdentifierReplaced:
    case Cause::IdentifierGiven:
        return ErrorKind::KeyboardChanged;
    case Cause::KeyboardDamaged:
        return ErrorKind::KeyboardDamaged;
    case Cause::KeyboardBusy:
    case Cause::WriteInProgress:
        return ErrorKind::KeyboardBusy;
    case Cause::Stopped:
        return ErrorKind::Stopped;
    case Cause::WriteInterrupted:
    case Cause::WritesInterrupted:
        return ErrorKind::WriteInterrupted;
    case Cause::DocumentFaults:
    case Cause::JobFaults:
    case Cause::SectionsAbsent:
        return ErrorKind::DocumentInvalid;
    }
    return ErrorKind::TransferFailed;
}

Error::Error(Cause cause, ErrorFacts facts, std::vector<Error> because)
    : ErrorFacts(std::move(facts)), suggestion(SuggestionFor(cause)), related(std::move(because)),
      m_cause(cause) {}

Error FileError(const std::exception& reason) {
    const auto* failure = dynamic_cast<const files::FileFailure*>(&reason);
    return Error(
        Cause::FileUnusable,
        {.reason = reason.what(),
         .place = {.file = failure != nullptr ? files::TextOf(failure->File()) : std::string()}});
}

} // namespace qx::host
