#include "app/ErrorDetails.h"

#include "app/ErrorWords.h"
#include "app/FaultWords.h"
#include "app/LocalTime.h"
#include "app/ProblemWords.h"
#include "simulator/Status.h"
#include "views/Bindings.h"

#include <QCoreApplication>
#include <QStringList>

namespace qx::app {

namespace {

using views::ToQt;

struct Errors {
    Q_DECLARE_TR_FUNCTIONS(Errors)
};

QString StatusText(sim::Status status) {
    using sim::Status;
    switch (status) {
    case Status::Ok:
        return Errors::tr("success");
    case Status::NotOpen:
        return Errors::tr("the keyboard is not open");
    case Status::KeyboardInUse:
        return Errors::tr("the keyboard is being used by another program");
    case Status::KeyboardInvalid:
        return Errors::tr("not a keyboard file, or damaged");
    case Status::FileFailed:
        return Errors::tr("a file could not be read or written");
    case Status::FileInvalid:
        return Errors::tr("the file is not of the expected kind, or damaged");
    case Status::OutsideMemory:
        return Errors::tr("the address or the size exceeds the keyboard's memory");
    case Status::NoSuchEntry:
        return Errors::tr("the directory has no such entry");
    case Status::TransferStopped:
        return Errors::tr("the transfer was interrupted");
    case Status::NoArgument:
        return Errors::tr("a buffer or a file name is missing");
    case Status::NotPositionMode:
        return Errors::tr("the keyboard is not in position-programming mode");
    case Status::NoSuchLayer:
        return Errors::tr("the keyboard has no such layer");
    case Status::ModelInvalid:
        return Errors::tr("there is no such model, or it is invalid");
    case Status::Busy:
        return Errors::tr("the driver is busy with another call");
    }
    return {};
}

// The driver's own words; those of the simulated keyboard are translated, unless its problem says
// more.
QString MeaningText(const host::Error& error) {
    if (!error.isSimulated)
        return ToQt(error.call->meaning);
    return error.problem == files::Problem()
               ? StatusText(static_cast<sim::Status>(error.call->status))
               : QString();
}

QString Hex(Long number) {
    return QString::number(number, 16).toUpper();
}

} // namespace

QString DetailsText(const host::Error& error) {
    QStringList lines;
    const auto add = [&](const QString& label, const QString& value) {
        if (!value.isEmpty())
            lines.append(label.arg(value));
    };
    if (error.call) {
        add(Errors::tr("Driver's function: %1"), ToQt(error.call->function));
        add(Errors::tr("Driver's status: %1"), QString::number(error.call->status));
        add(Errors::tr("Driver's message: %1"), MeaningText(error));
        add(QStringLiteral("%1"), DeedText(error.problem));
    }
    if (error.problem.deed == files::Deed::None)
        add(Errors::tr("Driver's function: %1"), ToQt(error.problem.subject));
    add(Errors::tr("File: %1"), ToQt(error.place.file));
    add(Errors::tr("Section: %1"), error.place.section.empty() ? QString() : SectionOf(error));
    add(Errors::tr("Address: %1 (hexadecimal)"),
        error.place.address ? Hex(*error.place.address) : QString());
    if (error.Why() == host::Cause::ReadBackDiffers)
        add(Errors::tr("Byte: %1 (hexadecimal)"),
            Errors::tr("%1 instead of %2").arg(Hex(error.found), Hex(error.expected)));
    add(Errors::tr("Layouts: %1"),
        error.Why() == host::Cause::NoSuchLayout ? Alternatives(error.names) : QString());
    for (const host::WriteName& write : error.writes)
        add(Errors::tr("Write: %1"), ToQt(write.id) + QStringLiteral(", ") + WriteText(write));
    add(Errors::tr("Backup: %1"), ToQt(error.backup));
    if (error.Why() == host::Cause::LayoutUnusable && error.index > 0)
        add(Errors::tr("Line: %1"), QString::number(error.index));
    add(QStringLiteral("%1"), ObstacleText(error.problem));
    add(Errors::tr("Reported by the system: %1"), ToQt(error.problem.system));
    for (const host::Fault& fault : error.faults)
        lines.append(FaultText(fault));
    for (const host::Error& related : error.related) {
        lines.append(CauseText(related));
        lines.append(DetailsText(related));
    }
    lines.removeAll(QString());
    lines.removeDuplicates(); // a related error can have the same facts
    return lines.join(QLatin1Char('\n'));
}

QString DocumentText(const std::string& name) {
    return name.empty() ? Errors::tr("an untitled document") : ToQt(name);
}

QString WriteText(const host::WriteName& write) {
    const QString time = LocalTime(write.time);
    const QString document = DocumentText(write.document);
    return write.unit.empty() ? Errors::tr("%1, %2").arg(document, time)
                              : Errors::tr("%1 for %2, %3").arg(document, ToQt(write.unit), time);
}

} // namespace qx::app
