#include "app/Failure.h"

#include "app/ErrorWords.h"
#include "app/Places.h"
#include "app/SettingWords.h"
#include "host/WritePlan.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMessageBox>
#include <QStringList>

namespace qx::app {

namespace {

QString Text(const char* text) {
    return QCoreApplication::translate("Failures", text);
}

} // namespace

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
    const QString text = CauseText(warning);
    return warning.Status() ? Text(QT_TRANSLATE_NOOP("Failures", "%1 (Driver's status: %2)"))
                                  .arg(text, QString::number(*warning.Status()))
                            : text;
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
    if (known == nullptr)
        return FailureOf(what, host::FileError(error));
    QStringList advice = {HoldsText(*known), SuggestionText(*known)};
    QStringList lines = {what, CauseText(*known)};
    advice.removeAll(QString());
    lines.append(advice.join(QLatin1Char(' ')));
    lines.removeAll(QString());
    return {lines.join(QLatin1Char('\n')), DetailsText(*known)};
}

void ShowFailure(QWidget* parent, const Failure& failure) {
    QMessageBox box(QMessageBox::Warning, QApplication::applicationDisplayName(), failure.text,
                    QMessageBox::Ok, parent);
    box.setTextFormat(Qt::PlainText);
    box.setDetailedText(failure.details.trimmed());
    box.exec();
}

} // namespace qx::app
