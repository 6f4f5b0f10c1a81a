#include "app/Failure.h"

#include "app/ErrorDetails.h"
#include "app/ErrorWords.h"
#include "app/Places.h"
#include "app/SettingWords.h"
#include "files/Files.h"
#include "host/WritePlan.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMessageBox>
#include <QStringList>

#include <filesystem>

namespace qx::app {

namespace {

struct Failures {
    Q_DECLARE_TR_FUNCTIONS(Failures)
};

QString Lines(QStringList lines) {
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

Failure::Remedy RemedyOf(host::Suggestion suggestion) {
    using host::Suggestion;
    switch (suggestion) {
    case Suggestion::Recover:
        return Failure::Remedy::Resolve;
    case Suggestion::RestoreBackup:
        return Failure::Remedy::Backups;
    case Suggestion::None:
    case Suggestion::NameWrite:
    case Suggestion::ReadAgain:
    case Suggestion::TryLater:
    case Suggestion::Repair:
    case Suggestion::SkipAbsent:
    case Suggestion::GiveVariables:
    case Suggestion::ChooseDriver:
    case Suggestion::ChooseModel:
    case Suggestion::LeaveOutKeyboard:
    case Suggestion::LeaveOutIdentifier:
    case Suggestion::MoveFileAway:
        break;
    }
    return Failure::Remedy::None;
}

} // namespace

QString LossText(const host::Loss& loss) {
    const auto lost = [&] {
        switch (loss.kind) {
        case host::Loss::Kind::NumberLimited:
            return Failures::tr(
                "%1: a number was limited to the range that a document allows (%2).");
        case host::Loss::Kind::TextCut:
            return Failures::tr("%1: a text was cut to what a keyboard can hold (%2).");
        case host::Loss::Kind::CodesLeftOut:
            return Failures::tr(
                "%1: codes that no keyboard can hold were left out of a sequence (%2).");
        case host::Loss::Kind::SequenceCut:
            return Failures::tr("%1: a sequence was cut to what a keyboard can hold (%2).");
        }
        return QString();
    };
    return lost().arg(SectionTitle(SectionOfPlace(loss.place)), QString::fromStdString(loss.place));
}

QString WarningText(const host::Error& warning) {
    const QString text = CauseText(warning);
    return warning.Status() ? Failures::tr("%1 (Driver's status: %2)")
                                  .arg(text, QString::number(*warning.Status()))
                            : text;
}

QString NotRestoredText(const host::NotRestored& part) {
    if (part.section.empty())
        return Failures::tr("Bytes of the backup for which this keyboard has no place: %1.")
            .arg(part.bytes);
    const QString title = SectionTitle(part.section);
    return Failures::tr("%1: not all of this is in the backup; the rest "
                        "stays as it is.")
        .arg(title.isEmpty() ? QString::fromStdString(part.section) : title);
}

Failure FailureOf(const QString& what, const std::exception& error) {
    if (const auto* known = dynamic_cast<const host::Error*>(&error)) {
        const QString heading =
            known->holds ? WriteFailureText(*known) : Lines({what, CauseText(*known)});
        return {Lines({heading, SuggestionText(*known)}), DetailsText(*known),
                RemedyOf(known->suggestion)};
    }
    const bool isOfFile = dynamic_cast<const files::ProblemError*>(&error) != nullptr ||
                          dynamic_cast<const std::filesystem::filesystem_error*>(&error) != nullptr;
    return FailureOf(what, isOfFile ? host::FileError(error)
                                    : host::Error(host::Cause::Unforeseen,
                                                  {.problem = files::ProblemOf(error)}));
}

QString WriteFailureText(const host::Error& error) {
    using host::Cause;
    using host::Holds;
    const Cause cause = error.Why();
    const QString why = CauseText(error);
    if (host::ShowsWhatIsHeld(cause) || !error.holds)
        return why;
    switch (*error.holds) {
    case Holds::NotTouched:
        return Lines({why, Failures::tr("Nothing was written.")});
    case Holds::Old:
        return Lines({why, Failures::tr("The keyboard's contents have not changed.")});
    case Holds::New:
        return cause == Cause::ReadBackDiffers
                   ? Failures::tr("Only a second read showed that the write was complete.")
                   : Failures::tr("The driver reported a failure, but the write was complete.");
    case Holds::PartlyWritten:
        return Lines({why, Failures::tr("The keyboard is partly written.")});
    case Holds::Unknown:
        return Lines({why, Failures::tr("The keyboard may be partly written.")});
    }
    return why;
}

void ShowFailure(QWidget* parent, const Failure& failure) {
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(), failure.text,
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(failure.details.trimmed());
    box.exec();
}

} // namespace qx::app
