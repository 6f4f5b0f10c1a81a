#include "files/Problem.h"

#include "qxcontrols/common/Text.h"

namespace qx::files {

namespace {

std::string_view WordsOf(Deed deed) {
    switch (deed) {
    case Deed::None:
        return "";
    case Deed::Read:
        return " cannot be read";
    case Deed::Write:
        return " cannot be written";
    case Deed::Create:
        return " cannot be created";
    case Deed::Remove:
        return " cannot be removed";
    case Deed::Start:
        return " cannot be started";
    case Deed::Load:
        return " cannot be loaded";
    }
    return "";
}

std::string SubjectOf(const Problem& problem) {
    if (problem.deed == Deed::Start)
        return problem.subject.empty() ? "another program" : "the program " + problem.subject;
    return (problem.deed == Deed::Load ? "the library " : "") + problem.subject;
}

std::string Duration(std::int64_t milliseconds) {
    return milliseconds % 1000 == 0 ? std::to_string(milliseconds / 1000) + " s"
                                    : std::to_string(milliseconds) + " ms";
}

std::string ObstacleText(const Problem& problem) {
    const std::string number = std::to_string(problem.number);
    switch (problem.obstacle) {
    case Obstacle::None:
        return problem.system;
    case Obstacle::NotOrdinary:
        return "it is not an ordinary file";
    case Obstacle::WriteProtected:
        return "it is write-protected";
    case Obstacle::IsFolder:
        return "it is a folder";
    case Obstacle::IsDevice:
        return "it is a device, not a file";
    case Obstacle::NoFolder:
        return "there is no folder " + Joined(problem.names);
    case Obstacle::FolderUnusable:
        return Joined(problem.names) + ": " + problem.system;
    case Obstacle::DeadLink:
        return "it is a broken link";
    case Obstacle::TooLarge:
        return "it has more than " + number + " bytes";
    case Obstacle::NoData:
        return "it delivers no data";
    case Obstacle::AlreadyThere:
        return "it already exists";
    case Obstacle::NoFolderOfUser:
        return "the user's folder is unknown: " +
               (problem.names.size() == 1
                    ? problem.names.front() + " is not set"
                    : "neither " + Joined(problem.names, " nor ") + " is set");
    case Obstacle::LibraryMissing:
        return "the file, or a library that it needs, is missing";
    case Obstacle::NotLoadable:
        return "it is not a library that this program can load";
    case Obstacle::NoDriverLibrary:
        return "it is neither a 32-bit nor a 64-bit library for this system";
    case Obstacle::HelperMissing:
        return "a " + number + "-bit driver library needs " + Joined(problem.names) +
               ", which is missing";
    case Obstacle::HelperOfOther:
        return Joined(problem.names) + " is of a different version from this program";
    case Obstacle::LacksFunctions:
        return "it lacks the functions " + Joined(problem.names);
    case Obstacle::Overrun:
        return "the driver wrote beyond the end of a buffer";
    case Obstacle::NoAnswer:
        return "the driver did not answer within " + Duration(problem.number);
    case Obstacle::InvalidAnswer:
        return "the driver gave an invalid answer";
    case Obstacle::ConnectionClosed:
        return "the driver closed its connection";
    case Obstacle::EndedByUser:
        return "the driver did not answer when the program was to end";
    case Obstacle::Exited:
    case Obstacle::Crashed:
        return "the driver " + HowItEnded(problem);
    case Obstacle::InUse:
        return "another program is using it";
    case Obstacle::OtherKind:
        return "offset " + number + ": a file of another kind, which does not begin with " +
               Joined(problem.names);
    case Obstacle::OtherVersion:
        return "offset " + number + ": the version is not " + Joined(problem.names);
    case Obstacle::EndsTooEarly:
        return "offset " + number + ": the file ends too early";
    case Obstacle::WrongSize:
        return "offset " + number + ": " + Joined(problem.names, " bytes of content expected, ") +
               " found";
    case Obstacle::WrongChecksum:
        return "offset " + number + ": the checksum does not match the content";
    case Obstacle::WrongParts:
        return "offset " + number + ": the parts do not add up";
    case Obstacle::WrongMemory:
        return "its memory has " + number + " bytes";
    case Obstacle::InvalidModel:
        return "the model in it is invalid";
    case Obstacle::IsKeyboard:
        return "it is the file of the keyboard itself";
    case Obstacle::OfOtherKeyboard:
        return "it has the parameters of another keyboard: " + Joined(problem.names, ", not ");
    case Obstacle::NoSuchModel:
        return "there is neither such a file nor such a model; the built-in ones are " +
               Joined(problem.names);
    }
    return {};
}

} // namespace

std::string_view CodeOf(Deed deed) {
    switch (deed) {
    case Deed::None:
        return "";
    case Deed::Read:
        return "read";
    case Deed::Write:
        return "write";
    case Deed::Create:
        return "create";
    case Deed::Remove:
        return "remove";
    case Deed::Start:
        return "start";
    case Deed::Load:
        return "load";
    }
    return "";
}

std::string_view CodeOf(Obstacle obstacle) {
    switch (obstacle) {
    case Obstacle::None:
        return "";
    case Obstacle::NotOrdinary:
        return "not-ordinary";
    case Obstacle::WriteProtected:
        return "write-protected";
    case Obstacle::IsFolder:
        return "is-folder";
    case Obstacle::IsDevice:
        return "is-device";
    case Obstacle::NoFolder:
        return "no-folder";
    case Obstacle::FolderUnusable:
        return "folder-unusable";
    case Obstacle::DeadLink:
        return "dead-link";
    case Obstacle::TooLarge:
        return "too-large";
    case Obstacle::NoData:
        return "no-data";
    case Obstacle::AlreadyThere:
        return "already-there";
    case Obstacle::NoFolderOfUser:
        return "no-folder-of-user";
    case Obstacle::LibraryMissing:
        return "library-missing";
    case Obstacle::NotLoadable:
        return "not-loadable";
    case Obstacle::NoDriverLibrary:
        return "no-driver-library";
    case Obstacle::HelperMissing:
        return "helper-missing";
    case Obstacle::HelperOfOther:
        return "helper-of-other-version";
    case Obstacle::LacksFunctions:
        return "lacks-functions";
    case Obstacle::Overrun:
        return "overrun";
    case Obstacle::NoAnswer:
        return "no-answer";
    case Obstacle::InvalidAnswer:
        return "invalid-answer";
    case Obstacle::ConnectionClosed:
        return "connection-closed";
    case Obstacle::EndedByUser:
        return "ended-by-user";
    case Obstacle::Exited:
        return "exited";
    case Obstacle::Crashed:
        return "crashed";
    case Obstacle::InUse:
        return "in-use";
    case Obstacle::OtherKind:
        return "other-kind";
    case Obstacle::OtherVersion:
        return "other-version";
    case Obstacle::EndsTooEarly:
        return "ends-too-early";
    case Obstacle::WrongSize:
        return "wrong-size";
    case Obstacle::WrongChecksum:
        return "wrong-checksum";
    case Obstacle::WrongParts:
        return "wrong-parts";
    case Obstacle::WrongMemory:
        return "wrong-memory";
    case Obstacle::InvalidModel:
        return "invalid-model";
    case Obstacle::IsKeyboard:
        return "is-keyboard";
    case Obstacle::OfOtherKeyboard:
        return "of-other-keyboard";
    case Obstacle::NoSuchModel:
        return "no-such-model";
    }
    return "";
}

std::string WordsOf(const Problem& problem) {
    const std::string head = SubjectOf(problem) + std::string(WordsOf(problem.deed));
    const std::string why = ObstacleText(problem);
    return head + (head.empty() || why.empty() ? "" : ": ") + why;
}

std::string HowItEnded(const Problem& problem) {
    if (problem.obstacle == Obstacle::Exited)
        return "ended its process with status " + std::to_string(problem.number);
    std::string how = problem.number == 0 ? "" : "signal " + std::to_string(problem.number);
    if (!problem.system.empty())
        how += (how.empty() ? "" : ", ") + problem.system;
    return "crashed" + (how.empty() ? "" : " (" + how + ")");
}

Problem ProblemOf(const std::exception& error) {
    const auto* problem = dynamic_cast<const ProblemError*>(&error);
    return problem != nullptr ? problem->What() : Problem{.system = error.what()};
}

} // namespace qx::files
