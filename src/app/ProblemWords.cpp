#include "app/ProblemWords.h"

#include <QCoreApplication>
#include <QStringList>

namespace qx::app {

namespace {

struct Problems {
    Q_DECLARE_TR_FUNCTIONS(Problems)
};

QString Names(const files::Problem& problem) {
    QStringList names;
    for (const std::string& name : problem.names)
        names.append(QString::fromStdString(name));
    return names.join(QStringLiteral(", "));
}

QString Name(const files::Problem& problem, std::size_t index) {
    return index < problem.names.size() ? QString::fromStdString(problem.names[index]) : QString();
}

} // namespace

QString DeedText(const files::Problem& problem) {
    using files::Deed;
    const QString subject = QString::fromStdString(problem.subject);
    if (subject.isEmpty())
        return {};
    switch (problem.deed) {
    case Deed::None:
        return {};
    case Deed::Read:
        return Problems::tr("%1 could not be read.").arg(subject);
    case Deed::Write:
        return Problems::tr("%1 could not be written.").arg(subject);
    case Deed::Create:
        return Problems::tr("%1 could not be created.").arg(subject);
    case Deed::Remove:
        return Problems::tr("%1 could not be removed.").arg(subject);
    case Deed::Start:
        return Problems::tr("The program %1 could not be started.").arg(subject);
    case Deed::Load:
        return Problems::tr("The library %1 could not be loaded.").arg(subject);
    }
    return {};
}

QString ObstacleText(const files::Problem& problem) {
    using files::Obstacle;
    const QString names = Names(problem);
    switch (problem.obstacle) {
    case Obstacle::None:
        return {};
    case Obstacle::NotOrdinary:
        return Problems::tr("It is not an ordinary file.");
    case Obstacle::WriteProtected:
        return Problems::tr("The file is write-protected.");
    case Obstacle::IsFolder:
        return Problems::tr("It is a folder.");
    case Obstacle::IsDevice:
        return Problems::tr("It is a device, not a file.");
    case Obstacle::NoFolder:
        return Problems::tr("There is no folder %1.").arg(names);
    case Obstacle::FolderUnusable:
        return Problems::tr("The folder %1 cannot be used.").arg(names);
    case Obstacle::DeadLink:
        return Problems::tr("It is a broken link.");
    case Obstacle::TooLarge:
        return Problems::tr("The file has more than %1 bytes.").arg(problem.number);
    case Obstacle::NoData:
        return Problems::tr("It delivers no data.");
    case Obstacle::AlreadyThere:
        return Problems::tr("The file already exists.");
    case Obstacle::NoFolderOfUser:
        return Problems::tr("The user's folder is unknown: none of these variables is set: %1.")
            .arg(names);
    case Obstacle::LibraryMissing:
        return Problems::tr("The file, or a library that it needs, is missing.");
    case Obstacle::NotLoadable:
        return Problems::tr("The file is not a library that this program can load.");
    case Obstacle::NoDriverLibrary:
        return Problems::tr("The file is neither a 32-bit nor a 64-bit library.");
    case Obstacle::HelperMissing:
        return Problems::tr("A %1-bit driver library needs the program %2, which is missing.")
            .arg(problem.number)
            .arg(names);
    case Obstacle::HelperOfOther:
        return Problems::tr("%1 is of a different version from this program.").arg(names);
    case Obstacle::LacksFunctions:
        return Problems::tr("The library lacks these functions: %1.").arg(names);
    case Obstacle::Overrun:
        return Problems::tr("The driver wrote beyond the end of a buffer.");
    case Obstacle::NoAnswer:
        return Problems::tr("The driver did not answer within %1 seconds.")
            .arg(static_cast<double>(problem.number) / 1000);
    case Obstacle::InvalidAnswer:
        return Problems::tr("The driver gave an invalid answer.");
    case Obstacle::ConnectionClosed:
        return Problems::tr("The driver closed its connection.");
    case Obstacle::EndedByUser:
        return Problems::tr("The driver did not answer when the program was to end.");
    case Obstacle::Exited:
        return Problems::tr("The driver ended its process with status %1.").arg(problem.number);
    case Obstacle::Crashed:
        return Problems::tr("The driver crashed.");
    case Obstacle::InUse:
        return Problems::tr("Another program is using it.");
    case Obstacle::OtherKind:
        return Problems::tr("The file is of another kind: it does not begin with %1.").arg(names);
    case Obstacle::OtherVersion:
        return Problems::tr("The file has another version than %2 (offset %1).")
            .arg(problem.number)
            .arg(names);
    case Obstacle::EndsTooEarly:
        return Problems::tr("The file ends too early, at offset %1.").arg(problem.number);
    case Obstacle::WrongSize:
        return Problems::tr("The file is damaged: offset %1 says %2 bytes of content, but there "
                            "are %3.")
            .arg(problem.number)
            .arg(Name(problem, 0), Name(problem, 1));
    case Obstacle::WrongChecksum:
        return Problems::tr("The file is damaged: its checksum at offset %1 is wrong.")
            .arg(problem.number);
    case Obstacle::WrongParts:
        return Problems::tr("The file is damaged: from offset %1, its parts do not add up.")
            .arg(problem.number);
    case Obstacle::WrongMemory:
        return Problems::tr("The keyboard memory in the file has the wrong size: %1 bytes.")
            .arg(problem.number);
    case Obstacle::InvalidModel:
        return Problems::tr("The keyboard model in the file is invalid.");
    case Obstacle::IsKeyboard:
        return Problems::tr("It is the file of the simulated keyboard itself.");
    case Obstacle::OfOtherKeyboard:
        return Problems::tr("The file has the parameters of another keyboard.");
    case Obstacle::NoSuchModel:
        return Problems::tr("There is neither such a file nor such a model. The built-in models "
                            "are: %1.")
            .arg(names);
    }
    return {};
}

} // namespace qx::app
