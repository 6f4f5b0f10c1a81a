#include "app/ErrorWords.h"

#include "app/ErrorDetails.h"
#include "app/FaultWords.h"
#include "app/ProblemWords.h"
#include "app/SettingWords.h"
#include "views/Bindings.h"

#include <QCoreApplication>
#include <QStringList>

namespace qx::app {

namespace {

using views::ToQt;

struct Errors {
    Q_DECLARE_TR_FUNCTIONS(Errors)
};

QString FileContent(const host::Error& error) {
    using host::KeyboardFile;
    if (!error.keyboardFile)
        return {};
    switch (*error.keyboardFile) {
    case KeyboardFile::Rom:
        return Errors::tr("keyboard firmware");
    case KeyboardFile::ChipcardRom:
        return Errors::tr("chipcard reader firmware");
    case KeyboardFile::Parameter:
        return Errors::tr("parameter memory");
    }
    return {};
}

QString FirstWrite(const host::Error& error) {
    return error.writes.empty() ? QString() : WriteText(error.writes.front());
}

// The first of the faults, and how many more there are.
QString Faults(const host::Error& error) {
    if (error.faults.empty())
        return {};
    const QString first = FaultText(error.faults.front());
    const auto others = static_cast<int>(error.faults.size()) - 1;
    return others == 0 ? first : Errors::tr("%1 (and %n more)", "", others).arg(first);
}

QString ReadBackText(const host::Error& error) {
    const QString text = Errors::tr("The keyboard does not hold what was written (%n byte(s)).", "",
                                    static_cast<int>(error.count));
    return error.place.section.empty()
               ? text
               : text + QLatin1Char(' ') + Errors::tr("First affected: %1.").arg(SectionOf(error));
}

QString UnusableFileText(const host::Error& error) {
    const QString text = DeedText(error.problem);
    return text.isEmpty() ? Errors::tr("A file could not be read or written.") : text;
}

QString WithRelated(const QString& text, const host::Error& error) {
    return error.related.empty() ? text
                                 : text + QLatin1Char(' ') + CauseText(error.related.front());
}

} // namespace

QString SectionOf(const host::Error& error) {
    const QString title = SectionTitle(error.place.section);
    return title.isEmpty() ? ToQt(error.place.section) : title;
}

QString Alternatives(const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& name : names)
        list.append(ToQt(name));
    return list.join(Errors::tr(" or "));
}

QString CauseText(const host::Error& error) {
    using host::Cause;
    const QString file = ToQt(error.place.file);
    const QString name = ToQt(error.name);
    const QString other = ToQt(error.other);
    switch (error.Why()) {
    case Cause::WritesInterrupted:
        return Errors::tr("The keyboard holds parts of several interrupted writes.");
    case Cause::DriverTakesNoKeyboard:
        return Errors::tr("%1 is not a simulated keyboard and accepts no keyboard file or model.")
            .arg(file);
    case Cause::KeyboardOfOtherModel:
        return Errors::tr("%1 holds a keyboard of the model %2, not %3.").arg(file, name, other);
    case Cause::SheetFormatUnknown:
        return Errors::tr("%1: the name of a key sheet must end with %2.")
            .arg(file, Alternatives(error.names));
    case Cause::NoKeyboardConnected:
        return Errors::tr("No keyboard is connected.");
    case Cause::OpeningFailed:
        return Errors::tr("The keyboard could not be opened.");
    case Cause::NoDirectory:
    case Cause::DirectoryGone:
        return Errors::tr("The keyboard has no configuration directory.");
    case Cause::DriverUnusable:
        return error.place.file.empty()
                   ? Errors::tr("The driver library cannot be used.")
                   : Errors::tr("The driver library %1 cannot be used.").arg(file);
    case Cause::KeyboardFileMissing:
        return Errors::tr("There is no keyboard in %1.").arg(file);
    case Cause::KeyboardFileRefused:
        return Errors::tr("The keyboard file %1 cannot be used.").arg(file);
    case Cause::ModelUnusable:
        return error.faults.empty()
                   ? Errors::tr("The model of the simulated keyboard cannot be used.")
                   : Errors::tr("The model %1 of the simulated keyboard has faults: %2")
                         .arg(file, Faults(error));
    case Cause::LayoutUnusable:
        return Errors::tr("The keyboard layout cannot be used.");
    case Cause::NoSuchLayout:
        return Errors::tr("There is no keyboard layout %1 in %2.").arg(name, file);
    case Cause::ReadingFailed:
        return Errors::tr("Reading from the keyboard failed.");
    case Cause::WritingFailed:
        return Errors::tr("Writing to the keyboard failed.");
    case Cause::ReadBackFailed:
        return WithRelated(Errors::tr("The written data could not be read back."), error);
    case Cause::FileNotSaved:
        return Errors::tr("The %1 could not be saved in %2.").arg(FileContent(error), file);
    case Cause::FileNotLoaded:
        return Errors::tr("The %1 could not be loaded from %2.").arg(FileContent(error), file);
    case Cause::CodePageNotRead:
        return Errors::tr("The keyboard's code page could not be read.");
    case Cause::PositionModeNotEntered:
    case Cause::PositionModeNotLeft:
    case Cause::KeysNotAsked:
        return Errors::tr("The keyboard does not report which keys are pressed.");
    case Cause::NothingMoved:
        return Errors::tr("Reading from the keyboard failed: the driver reported success but moved "
                          "no data.");
    case Cause::NothingSaved:
        return Errors::tr("The driver reported success but wrote nothing; %1 is unchanged.")
            .arg(file);
    case Cause::NoPlaceInBlock:
        return Errors::tr("A setting has no place in the keyboard's memory.");
    case Cause::SectionUnknown:
        return Errors::tr("It is not known whether the keyboard has this module: %1.")
            .arg(SectionOf(error));
    case Cause::KeyboardUnknown:
        return Errors::tr("It could not be determined which keyboard this is.");
    case Cause::EntriesUnreadable:
        return Errors::tr("Entries of the keyboard's configuration directory could not be read: "
                          "%1, the first of them entry %2.")
            .arg(error.count)
            .arg(error.index);
    case Cause::AddressImpossible:
        return Errors::tr("The keyboard's configuration directory has %1 at %2, which is not an "
                          "address.")
            .arg(name)
            .arg(error.place.address.value_or(0));
    case Cause::NamesUnreadable:
        return Errors::tr("The keyboard's names could not be read.");
    case Cause::CapabilitiesUnreadable:
        return Errors::tr("The keyboard's capabilities could not be read and count as absent.");
    case Cause::FileUnusable:
        return UnusableFileText(error);
    case Cause::RecordDamaged:
        return Errors::tr("The record %1 cannot be used.").arg(file);
    case Cause::EntryDamaged:
        return Errors::tr("The record of a write is damaged; it may be of an interrupted write to "
                          "this keyboard.");
    case Cause::NotRecorded:
        return Errors::tr("The keyboard was written, read back and verified, but the write "
                          "could not be recorded.");
    case Cause::LoadNotRecorded:
        return Errors::tr("The file was loaded into the keyboard, but that could not be recorded.");
    case Cause::EntryNotEnded:
        return Errors::tr("The record of the interrupted write could not be removed.");
    case Cause::NoReceipt:
        return Errors::tr("The receipt could not be written.");
    case Cause::CaptionsUnusable:
        return Errors::tr("The names of options in %1 are not used: %2").arg(file, Faults(error));
    case Cause::NotACodePage:
        return Errors::tr("%1 is not a code page: it has %2 bytes instead of %3.")
            .arg(file)
            .arg(error.count)
            .arg(error.expected);
    case Cause::NameNotForDriver:
        return Errors::tr("The driver cannot open %1: the name has letters that are not in the "
                          "system's character set.")
            .arg(file);
    case Cause::PreferencesNotStored:
        return Errors::tr("The preferences could not be stored.");
    case Cause::PreferencesNotAFile:
        return Errors::tr("The preferences cannot be kept in %1: it is not an ordinary file.")
            .arg(file);
    case Cause::PreferencesElsewhere:
        return Errors::tr("The preferences cannot be kept in %1: it holds something else.")
            .arg(file);
    case Cause::PreferencesNotSetAside:
        return Errors::tr("The preferences in %1 are damaged and could not be set aside.")
            .arg(file);
    case Cause::PreferenceNotStored:
        return Errors::tr("The preference %1 could not be stored in %2.").arg(name, file);
    case Cause::NoPreferencesFolder:
        return Errors::tr("There is no folder for the preferences.");
    case Cause::UnsavedWorkDamaged:
        return Errors::tr("%1 is not a copy of unsaved work, or is damaged.").arg(file);
    case Cause::ReadBackDiffers:
        return ReadBackText(error);
    case Cause::OtherKeyboard:
        return Errors::tr("This is not the keyboard that the write was prepared for.");
    case Cause::ContentsChanged:
        return Errors::tr("The keyboard's contents have changed since the write was prepared, or "
                          "it is another keyboard.");
    case Cause::BackupOfOtherModules:
        return Errors::tr(
                   "The backup was made from a %1, whose modules differ from those of this %2.")
            .arg(name, other);
    case Cause::BackupReachedOtherwise:
        return error.names.empty()
                   ? Errors::tr(
                         "This backup comes from another keyboard of this model, or from one that "
                         "was connected differently.")
                   : Errors::tr(
                         "This backup comes from another keyboard of this model (%1), or from one "
                         "that was connected differently.")
                         .arg(Alternatives(error.names));
    case Cause::BackupOfUnit:
        return Errors::tr(
                   "This backup belongs to %1, and no record shows which unit this keyboard is.")
            .arg(Alternatives(error.names));
    case Cause::BackupOfOtherUnit:
        return Errors::tr(
                   "This backup belongs to %1, and according to the records this keyboard is %2.")
            .arg(Alternatives(error.names), Alternatives(error.others));
    case Cause::WriteResolved:
        return Errors::tr("The interrupted write has meanwhile been resolved.");
    case Cause::HoldsOldOfWrite:
        return Errors::tr("The keyboard holds exactly what it held before the interrupted write "
                          "(%1), so it may be another one. The record of the write is kept.")
            .arg(FirstWrite(error));
    case Cause::HoldsNewOfWrite:
        return Errors::tr("The keyboard holds all of the interrupted write (%1), so it may be "
                          "another one. The record of the write is kept.")
            .arg(FirstWrite(error));
    case Cause::HoldsNothingOfWrite:
        return Errors::tr("The keyboard's contents do not match the interrupted write (%1). The "
                          "record of the write is kept.")
            .arg(FirstWrite(error));
    case Cause::KeyboardDamaged:
        return Errors::tr("A part of the keyboard's memory is damaged: %1").arg(Faults(error));
    case Cause::KeyboardBusy:
        return Errors::tr("Another program is writing to this keyboard, or to one of its kind that "
                          "cannot be distinguished from it.");
    case Cause::WriteInProgress:
        return Errors::tr("Another program is writing to this keyboard (%1).")
            .arg(FirstWrite(error));
    case Cause::Stopped:
        return Errors::tr("Stopped before anything was written.");
    case Cause::WriteInterrupted:
        return Errors::tr("The keyboard holds a part of an interrupted write (%1), which must be "
                          "finished or rolled back first.")
            .arg(FirstWrite(error));
    case Cause::DocumentFaults:
        return file.isEmpty() ? Errors::tr("The document has faults: %1").arg(Faults(error))
                              : Errors::tr("%1 has faults: %2").arg(file, Faults(error));
    case Cause::Unforeseen:
        return Errors::tr("An unexpected error occurred.");
    // The others are of batches, the command line and scripts; the application never meets them.
    case Cause::WrongUsage:
    case Cause::NoSuchBackup:
    case Cause::NoSuchWrite:
    case Cause::FileNotConverted:
    case Cause::LayerNotSelected:
    case Cause::NoLayers:
    case Cause::UnprovedNotRecorded:
    case Cause::SheetNotMade:
    case Cause::NotTheUnit:
    case Cause::IdentifierReplaced:
    case Cause::IdentifierGiven:
    case Cause::SectionsAbsent:
    case Cause::WriteToForgetUnclear:
    case Cause::IdentifierLeftOut:
    case Cause::WriteRolledBack:
    case Cause::ControlReported:
    case Cause::NoSuchUnit:
    case Cause::UnitProcessEnded:
    case Cause::ReportDamaged:
    case Cause::JobBusy:
    case Cause::JobFaults:
    case Cause::OutputLost:
    case Cause::InputEndless:
        return Errors::tr("This could not be done.");
    }
    return {};
}

QString SuggestionText(const host::Error& error) {
    using host::Suggestion;
    switch (error.suggestion) {
    case Suggestion::None:
    case Suggestion::NameWrite:          // a list to choose from is shown
    case Suggestion::SkipAbsent:         // done anyway
    case Suggestion::LeaveOutIdentifier: // the review warns
        return {};
    case Suggestion::Recover:
        return error.holds == host::Holds::Unknown
                   ? Errors::tr("Resolve the interrupted write once the keyboard answers again.")
                   : Errors::tr("Resolve the interrupted write first.");
    case Suggestion::RestoreBackup:
        return Errors::tr("The backup %1 on the Backups page has the keyboard's previous contents.")
            .arg(ToQt(error.backup));
    case Suggestion::ReadAgain:
        return Errors::tr("Start again: the keyboard is then read once more.");
    case Suggestion::TryLater:
        return Errors::tr("Try again when the other program has finished.");
    case Suggestion::Repair:
        return Errors::tr("Choose Keyboard › Write to keyboard to replace the damaged part with "
                          "the document's settings.");
    case Suggestion::GiveVariables:
        return Errors::tr("The document has placeholders instead of values. Replace them in a text "
                          "editor, and open it again.");
    case Suggestion::ChooseDriver:
        return Errors::tr("Choose another driver library or keyboard in the Keyboard menu.");
    case Suggestion::ChooseModel:
        return Errors::tr("Start the program with the option --model to choose a model.");
    case Suggestion::LeaveOutKeyboard:
        return Errors::tr("Start the program without the options --keyboard and --model.");
    case Suggestion::MoveFileAway:
        return error.place.file.empty()
                   ? Errors::tr("Move the file to another folder once you have dealt with it.")
                   : Errors::tr("Move %1 to another folder once you have dealt with it.")
                         .arg(ToQt(error.place.file));
    }
    return {};
}

} // namespace qx::app
