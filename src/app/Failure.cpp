#include "app/Failure.h"

#include "app/Places.h"
#include "app/SettingWords.h"
#include "host/ErrorText.h"
#include "host/Session.h"
#include "host/WritePlan.h"

#include <QApplication>
#include <QCoreApplication>
#include <QLocale>
#include <QMessageBox>
#include <QRegularExpression>

namespace qx::app {

namespace {

QString Text(const char* text) {
    return QCoreApplication::translate("Failures", text);
}

// The layers below speak English. Where the program does too, their message is what the user reads,
// as a sentence and without the names of the driver's functions.
QString Sentence(QString message) {
    static const QRegularExpression driver(
        QStringLiteral("(: )?QXCFG_\\w+ gave status -?\\d+( \\([^;]*\\))?"));
    message.remove(driver);
    message = message.trimmed();
    if (message.isEmpty())
        return message;
    if (!message.section(QLatin1Char(' '), 0, 0).contains(QLatin1Char('/'))) // else it is a file
        message[0] = message[0].toUpper();
    if (!message.endsWith(QLatin1Char('.')))
        message += QLatin1Char('.');
    return message;
}

QString FaultLines(const std::vector<host::Fault>& faults) {
    QString lines;
    for (const host::Fault& fault : faults)
        lines += QString::fromStdString(ToText(fault)) + QLatin1Char('\n');
    return lines;
}

} // namespace

QString KindText(host::ErrorKind kind) {
    switch (kind) {
    case host::ErrorKind::Usage:
        return Text(QT_TRANSLATE_NOOP("Failures", "This cannot be done."));
    case host::ErrorKind::KeyboardNotOpened:
        return Text(QT_TRANSLATE_NOOP("Failures", "The keyboard could not be opened."));
    case host::ErrorKind::TransferFailed:
        return Text(QT_TRANSLATE_NOOP("Failures", "The transfer from or to the keyboard failed."));
    case host::ErrorKind::FileFailed:
        return Text(QT_TRANSLATE_NOOP("Failures", "A file could not be read or written."));
    case host::ErrorKind::ReadBackDiffers:
        return Text(
            QT_TRANSLATE_NOOP("Failures", "The keyboard does not hold the settings written."));
    case host::ErrorKind::KeyboardChanged:
        return Text(QT_TRANSLATE_NOOP(
            "Failures", "This is a different keyboard, or its contents have changed."));
    case host::ErrorKind::KeyboardDamaged:
        return Text(QT_TRANSLATE_NOOP(
            "Failures", "A part of the keyboard's memory is damaged and was left as it is."));
    case host::ErrorKind::KeyboardBusy:
        return Text(QT_TRANSLATE_NOOP("Failures", "Another program is writing to this keyboard."));
    case host::ErrorKind::Stopped:
        return Text(QT_TRANSLATE_NOOP("Failures", "It was stopped before anything was written."));
    case host::ErrorKind::WriteInterrupted:
        return Text(QT_TRANSLATE_NOOP(
            "Failures", "An interrupted write must be finished or rolled back first."));
    case host::ErrorKind::DocumentInvalid:
        return Text(QT_TRANSLATE_NOOP("Failures", "The document has faults."));
    case host::ErrorKind::LayoutInvalid:
        return Text(QT_TRANSLATE_NOOP("Failures", "The keyboard layout has faults."));
    case host::ErrorKind::ModelInvalid:
        return Text(
            QT_TRANSLATE_NOOP("Failures", "The model of the simulated keyboard has faults."));
    }
    return {};
}

QString LossText(const host::Loss& loss) {
    const auto lost = [&] {
        switch (loss.kind) {
        case host::Loss::Kind::NumberLimited:
            return Text(QT_TRANSLATE_NOOP(
                "Failures", "%1: a number was limited to those that a document can hold (%2)."));
        case host::Loss::Kind::TextCut:
            return Text(QT_TRANSLATE_NOOP("Failures",
                                          "%1: a text was cut to what a keyboard can hold (%2)."));
        case host::Loss::Kind::CodesLeftOut:
            return Text(QT_TRANSLATE_NOOP(
                "Failures",
                "%1: codes that no keyboard can hold were left out of a sequence (%2)."));
        case host::Loss::Kind::SequenceCut:
            return Text(QT_TRANSLATE_NOOP(
                "Failures", "%1: a sequence was cut to what a keyboard can hold (%2)."));
        }
        return QString();
    };
    return lost().arg(SectionTitle(SectionOfPlace(loss.place)), QString::fromStdString(loss.place));
}

QString WarningText(const host::Error& warning) {
    const auto number = [](std::optional<Long> value) {
        return QString::number(value.value_or(0));
    };
    const QString status = number(warning.Status());
    switch (warning.Why()) {
    case host::Cause::EntriesUnreadable:
        return Text(QT_TRANSLATE_NOOP("Failures",
                                      "Entries of the keyboard's configuration directory could not "
                                      "be read: %1, the first of them entry %2 (the driver's "
                                      "status: %3)."))
            .arg(QString::number(warning.count), number(warning.index), status);
    case host::Cause::AddressImpossible:
        return Text(QT_TRANSLATE_NOOP(
                        "Failures",
                        "The keyboard's configuration directory has %1 at %2, which is not an "
                        "address."))
            .arg(QString::fromStdString(warning.name), number(warning.place.address));
    case host::Cause::NamesUnreadable:
        return Text(QT_TRANSLATE_NOOP(
                        "Failures",
                        "The keyboard's names could not be read (the driver's status: %1)."))
            .arg(status);
    case host::Cause::AbilitiesUnreadable:
        return Text(QT_TRANSLATE_NOOP("Failures",
                                      "The keyboard's abilities could not be read and count as "
                                      "absent (the driver's status: %1)."))
            .arg(status);
    default:
        return FailureOf({}, warning).text;
    }
}

QString OtherKeyboardText(const host::Error& other) {
    const auto joined = [](const std::vector<std::string>& units) {
        QStringList list;
        for (const std::string& unit : units)
            list.append(QString::fromStdString(unit));
        return list.join(Text(QT_TRANSLATE_NOOP("Failures", " or ")));
    };
    switch (other.Why()) {
    case host::Cause::BackupOfUnit:
        return Text(QT_TRANSLATE_NOOP("Failures", "This backup is of %1, and no record shows which "
                                                  "unit this keyboard is."))
            .arg(joined(other.names));
    case host::Cause::BackupOfOtherUnit:
        return Text(
                   QT_TRANSLATE_NOOP(
                       "Failures", "This backup is of %1, and by the records this keyboard is %2."))
            .arg(joined(other.names), joined(other.others));
    default:
        return other.names.empty()
                   ? Text(QT_TRANSLATE_NOOP("Failures",
                                            "This backup is of another keyboard of this kind, or "
                                            "of one that was reached in another way."))
                   : Text(QT_TRANSLATE_NOOP("Failures",
                                            "This backup is of another keyboard of this kind (%1), "
                                            "or of one that was reached in another way."))
                         .arg(joined(other.names));
    }
}

QString NotRestoredText(const host::NotRestored& part) {
    if (part.section.empty())
        return Text(
                   QT_TRANSLATE_NOOP(
                       "Failures", "Bytes of the backup for which this keyboard has no place: %1."))
            .arg(part.bytes);
    const QString title = SectionTitle(part.section);
    return Text(QT_TRANSLATE_NOOP("Failures", "%1: not all of this is in the backup; the rest "
                                              "stays as it is."))
        .arg(title.isEmpty() ? QString::fromStdString(part.section) : title);
}

Failure FailureOf(const QString& what, const std::exception& error) {
    const auto* known = dynamic_cast<const host::Error*>(&error);
    const QString message = known != nullptr ? QString::fromStdString(host::TextOf(*known))
                                             : QString::fromUtf8(error.what());
    const bool isEnglish = QLocale().language() == QLocale::English;
    Failure failure;
    failure.text = isEnglish || known == nullptr ? Sentence(message) : KindText(known->Kind());
    if (!what.isEmpty())
        failure.text.prepend(what + QLatin1Char('\n'));
    failure.details = message;
    if (known != nullptr && known->faults.size() > 1)
        failure.details = FaultLines(known->faults);
    return failure;
}

void ShowFailure(QWidget* parent, const Failure& failure) {
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(), failure.text,
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(failure.details.trimmed());
    box.exec();
}

} // namespace qx::app
