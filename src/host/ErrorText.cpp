#include "host/ErrorText.h"

#include "host/Journal.h"
#include "host/KeyboardFiles.h"
#include "host/WritePlan.h"
#include "qxcontrols/common/Text.h"

namespace qx::host {

namespace {

// Why an operation failed: the driver's call, with the meaning of its status, or a problem.
std::string WithReason(const std::string& what, const Error& error) {
    if (!error.call) {
        const std::string problem = files::WordsOf(error.problem);
        return what + (problem.empty() ? "" : ": ") + problem;
    }
    const auto& [function, status, meaning] = *error.call;
    return what + ": " + function + " gave status " + std::to_string(status) +
           (meaning.empty() ? "" : " (" + meaning + ")");
}

// "…: …": the first of the related errors explains this one.
std::string WithRelated(const std::string& what, const Error& error) {
    return error.related.empty() ? what : what + ": " + TextOf(error.related.front());
}

// "till.json: ... (and 2 more faults)"
std::string WithFaults(const std::string& what, const Error& error) {
    return error.faults.empty() ? what : what + ": " + ToText(error.faults);
}

// "till.json: /magnetCard: an object is expected"
std::string FirstFault(const Error& error) {
    std::string text = error.place.file;
    if (error.faults.empty())
        return text;
    return text + (text.empty() ? "" : ": ") + ToText(error.faults.front());
}

std::string AddressOf(const Error& error) {
    return "address " + Hex(error.place.address.value_or(0));
}

std::string TheWrite(const Error& error) {
    return error.writes.empty() ? "write" : InWords(error.writes.front());
}

std::string ListOf(const std::vector<WriteName>& writes) {
    std::string names;
    for (const WriteName& write : writes)
        names += "; " + write.id + ", " + InWords(write);
    return names;
}

std::string ContentOf(const Error& error) {
    return error.keyboardFile ? std::string(KindOf(*error.keyboardFile).content) : "";
}

std::string ReadBackText(const Error& error) {
    const std::string unnamed =
        error.place.pointer.empty() ? "bytes that no setting uses" : error.place.section;
    return "the keyboard does not hold what was written: " +
           (error.setting.section.empty() ? unnamed : ToText(error.setting)) + ": " +
           AddressOf(error) + " holds " + Hex(error.found) + " in place of " + Hex(error.expected) +
           " (hexadecimal); " + std::to_string(error.count) +
           (error.count == 1 ? " byte differs" : " bytes differ");
}

std::string CauseText(const Error& error) {
    const std::string& file = error.place.file;
    const std::string& name = error.name;
    switch (error.Why()) {
    case Cause::WrongUsage:
    case Cause::SheetNotMade:
    case Cause::ControlReported:
        return error.reason;
    case Cause::DriverUnusable:
    case Cause::FileUnusable:
    case Cause::Unforeseen:
        return files::WordsOf(error.problem);
    case Cause::NoSuchBackup:
        return "there is no backup " + name;
    case Cause::NoSuchWrite:
        return "there is no interrupted write " + name + " on record";
    case Cause::WriteToForgetUnclear:
        return "this keyboard holds parts of several interrupted writes" + ListOf(error.writes);
    case Cause::NoSuchUnit:
        return file + " has no unit \"" + name + "\"";
    case Cause::DriverTakesNoKeyboard:
        return "the driver library " + file +
               " is not a simulated keyboard and accepts no keyboard file or model";
    case Cause::KeyboardOfOtherModel:
        return file + " holds a keyboard of the model " + name + ", not " + error.other;
    case Cause::SheetFormatUnknown:
        return file + ": the file's name must end with " + Joined(error.names, " or ");
    case Cause::NoKeyboardConnected:
        return "no keyboard is connected";
    case Cause::OpeningFailed:
        return WithReason("the keyboard could not be opened", error);
    case Cause::NoDirectory:
        return "the keyboard could not be opened: it has no configuration directory";
    case Cause::KeyboardFileMissing:
        return "there is no keyboard in " + file;
    case Cause::KeyboardFileRefused:
        return WithReason("the keyboard file " + file + " could not be chosen", error);
    case Cause::ModelUnusable:
        return WithFaults(
            WithReason("the model " + (file.empty() ? "of the keyboard" : file) + " cannot be used",
                       error),
            error);
    case Cause::LayoutUnusable:
        return WithFaults("the keyboard layout " + file + " cannot be used" +
                              (error.index > 0 ? ": line " + std::to_string(error.index) : ""),
                          error);
    case Cause::NoSuchLayout:
        return "there is no keyboard layout " + name + "; the layouts in " + file +
               " are: " + (error.names.empty() ? "none" : Joined(error.names, ", "));
    case Cause::ReadingFailed:
        return WithReason("reading from the keyboard failed", error);
    case Cause::WritingFailed:
        return WithReason("writing to the keyboard failed", error);
    case Cause::ReadBackFailed:
        return WithRelated("the written data could not be read back", error);
    case Cause::FileNotSaved:
        return WithReason("saving the " + ContentOf(error) + " into " + file + " failed", error);
    case Cause::FileNotLoaded:
        return WithReason("loading the " + ContentOf(error) + " from " + file + " failed", error);
    case Cause::FileNotConverted:
        return WithReason("converting " + file + " failed", error);
    case Cause::CodePageNotRead:
        return WithReason("reading the code page from the keyboard failed", error);
    case Cause::LayerNotSelected:
        return WithReason("selecting the layer failed", error);
    case Cause::PositionModeNotEntered:
        return WithReason("entering position-programming mode failed", error);
    case Cause::PositionModeNotLeft:
        return WithReason("leaving position-programming mode failed", error);
    case Cause::KeysNotAsked:
        return WithReason("the keyboard cannot be asked for its keys", error);
    case Cause::DirectoryGone:
        return "reading from the keyboard failed: it has no configuration directory";
    case Cause::NothingMoved:
        return "reading from the keyboard failed: the driver reported success and moved nothing "
               "to " +
               AddressOf(error) + " (hexadecimal)";
    case Cause::NothingSaved:
        return "the driver reported success and wrote nothing into the file; " + file +
               " is as it was";
    case Cause::NoPlaceInBlock:
        return "writing to the keyboard failed: a setting has no place in its block";
    case Cause::SectionUnknown:
        return WithRelated("it is not known where the keyboard has its " + ToText(error.setting) +
                               " settings, if it has any",
                           error);
    case Cause::KeyboardUnknown:
        return WithRelated("it cannot be determined which keyboard this is", error);
    case Cause::NoLayers:
        return "this keyboard has no layered function keys";
    case Cause::UnitProcessEnded:
        return "the process that programmed it " + files::HowItEnded(error.problem) +
               "; the keyboard's contents are unknown; the next run resolves this";
    case Cause::EntriesUnreadable:
        return WithReason("entries of the configuration directory could not be read: " +
                              std::to_string(error.count) + ", the first of them entry " +
                              std::to_string(error.index),
                          error);
    case Cause::AddressImpossible:
        return "the configuration directory has " + name + " at " +
               std::to_string(error.place.address.value_or(0)) + ", which is not an address";
    case Cause::NamesUnreadable:
        return WithReason("the keyboard's names could not be read", error);
    case Cause::CapabilitiesUnreadable:
        return WithReason("the keyboard's capabilities could not be read, and count as absent",
                          error);
    case Cause::RecordDamaged:
        return WithFaults(file + " cannot be used", error);
    case Cause::EntryDamaged:
        return (error.related.empty() ? "" : TextOf(error.related.front())) +
               "; it may be of an interrupted write to this keyboard";
    case Cause::ReportDamaged:
        return (error.related.empty() ? "" : TextOf(error.related.front())) +
               "; it records which keyboards are done";
    case Cause::NotRecorded:
        return "the keyboard was written, read back and verified";
    case Cause::UnprovedNotRecorded:
        return "the keyboard was written and not read back";
    case Cause::LoadNotRecorded:
        return "the file was loaded into the keyboard";
    case Cause::EntryNotEnded:
        return WithRelated("the journal entry could not be deleted", error);
    case Cause::NoReceipt:
        return WithRelated("there is no receipt", error);
    case Cause::CaptionsUnusable:
        return WithFaults("the names of options in " + file + " are not used", error);
    case Cause::NotACodePage:
        return file + " is not a code page: it has " + std::to_string(error.count) +
               " bytes, and " + std::to_string(error.expected) + " are needed";
    case Cause::NameNotForDriver:
        return file + " has letters that are not in the system's character set: the driver would "
                      "open another file";
    case Cause::PreferencesNotStored:
        return WithReason("the preferences could not be stored", error);
    case Cause::PreferencesNotAFile:
        return "preferences cannot be kept in " + file + ": it is not an ordinary file";
    case Cause::PreferencesElsewhere:
        return "preferences cannot be kept in " + file +
               ": it holds something else, and stays as it is";
    case Cause::PreferencesNotSetAside:
        return WithReason("the preferences in " + file + " are damaged and cannot be set aside",
                          error);
    case Cause::PreferenceNotStored:
        return "the preference " + name + " could not be stored in " + file;
    case Cause::NoPreferencesFolder:
        return WithReason("there is no folder for the preferences", error);
    case Cause::UnsavedWorkDamaged:
        return file + " is not a copy of unsaved work, or is damaged";
    case Cause::JobBusy:
        return "another batch is working on " + file;
    case Cause::OutputLost:
        return "standard output could not be written";
    case Cause::InputEndless:
        return "standard input does not end after " + std::to_string(error.count) + " bytes";
    case Cause::ReadBackDiffers:
        return ReadBackText(error);
    case Cause::OtherKeyboard:
        return "this is not the keyboard that the write was planned for";
    case Cause::ContentsChanged:
        return "the keyboard no longer holds what it held when the write was planned, or it is "
               "another one";
    case Cause::BackupOfOtherModules:
        return "the backup is of a " + name + " with other modules than this " + error.other;
    case Cause::BackupReachedOtherwise:
        return "the backup is of another keyboard of this kind" +
               (error.names.empty() ? "" : " (" + Joined(error.names, " or ") + ")") +
               ", or of one that was connected differently";
    case Cause::BackupOfUnit:
        return "the backup is of " + Joined(error.names, " or ") +
               ", and no record shows which unit this keyboard is";
    case Cause::BackupOfOtherUnit:
        return "the backup is of " + Joined(error.names, " or ") +
               ", and according to the records this keyboard is " + Joined(error.others, " or ");
    case Cause::WriteResolved:
        return "the interrupted write has meanwhile been resolved";
    case Cause::HoldsOldOfWrite:
        return "the keyboard holds exactly what was there before the " + TheWrite(error) +
               ", so it may be another one; the record of that write is kept";
    case Cause::HoldsNewOfWrite:
        return "the keyboard holds all of the " + TheWrite(error) +
               ", so it may be another one; the record of that write is kept";
    case Cause::HoldsNothingOfWrite:
        return "the keyboard's contents do not match the interrupted " + TheWrite(error) +
               "; the record of that write is kept";
    case Cause::NotTheUnit:
        return "this is another keyboard: its identifier is " + (name.empty() ? "none" : name) +
               ", not " + error.other;
    case Cause::IdentifierReplaced:
        return "the keyboard gets another keyboard's identifier from " + file;
    case Cause::IdentifierGiven:
        return "the keyboard has no identifier and is given the one in " + file;
    case Cause::IdentifierLeftOut:
        return file + " has the identifier " + name +
               ", which only one keyboard can have: it is left out, and each keyboard keeps its "
               "own";
    case Cause::WriteRolledBack:
        return "rolled back the " + TheWrite(error) + ", which was interrupted";
    case Cause::KeyboardDamaged:
        return FirstFault(error);
    case Cause::KeyboardBusy:
        return "another program is writing to this keyboard, or to one of its kind that cannot "
               "be distinguished from it";
    case Cause::WriteInProgress:
        return "the " + TheWrite(error) + " is being written by another program";
    case Cause::Stopped:
        return "stopped before anything was written";
    case Cause::WriteInterrupted:
        return "the keyboard holds a part of an interrupted " + TheWrite(error) +
               ", which is to be finished or rolled back first";
    case Cause::WritesInterrupted:
        return "the keyboard holds parts of several interrupted writes, which lead to different "
               "contents" +
               ListOf(error.writes);
    case Cause::DocumentFaults:
    case Cause::JobFaults:
        return WithFaults(file, error);
    case Cause::SectionsAbsent:
        return FirstFault(error);
    }
    return {};
}

std::string HoldsText(const Error& error) {
    const bool isReadBack = error.Why() == Cause::ReadBackDiffers;
    switch (*error.holds) {
    case Holds::NotTouched:
        return "; nothing was written";
    case Holds::Old:
        return "; nothing changed: the keyboard holds what it held before";
    case Holds::New:
        return isReadBack
                   ? "; a second read shows everything that was to be written, so one of the "
                     "two reads was wrong"
                   : "; read back, the keyboard holds everything that was to be written";
    case Holds::PartlyWritten:
        return isReadBack ? "" : "; the keyboard is partly written";
    case Holds::Unknown:
        return "; the keyboard may be partly written";
    }
    return {};
}

} // namespace

std::string TextOf(const Error& error) {
    std::string text = CauseText(error);
    if (error.holds && !ShowsWhatIsHeld(error.Why()))
        text += HoldsText(error);
    if (!error.backup.empty())
        text += "; the backup " + error.backup + " has the previous contents";
    for (const Error& other : error.related)
        if (other.Why() == Cause::EntryNotEnded || other.Why() == Cause::NoReceipt)
            text += "; " + TextOf(other);
    return VisibleText(text);
}

std::string InWords(const WriteName& write) {
    return std::string(CodeOf(write.action)) + " of " +
           (write.document.empty() ? "an untitled document" : write.document) +
           (write.unit.empty() ? "" : " for " + write.unit) + " (begun " + write.time + ")";
}

std::string InWords(const JournalEntry& entry) {
    return InWords(entry.Name());
}

std::string TextOf(const NotRestored& part) {
    return part.section.empty()
               ? std::to_string(part.bytes) +
                     " bytes of the backup lie where this program knows no area"
               : part.section + " is not in the backup, or not all of it, and stays as it is";
}

} // namespace qx::host
