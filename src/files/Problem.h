// Problem: why something could not be done, as data.
//
// Each program words it for its own users; the English words are here, for the command line. Only
// the texts of the operating system, and of drivers, are texts.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx::files {

// The action on the subject that failed.
enum class Deed {
    None,   // the subject itself failed: a function of a driver
    Read,   // a file, as the next three
    Write,  //
    Create, // also a folder
    Remove, //
    Start,  // a program
    Load,   // a library
};
[[nodiscard]] constexpr Deed LastOf(Deed) {
    return Deed::Load;
}

// Why; the comments list the facts.
enum class Obstacle {
    None, // the system's text alone
    // Files and folders
    NotOrdinary,    // not an ordinary file
    WriteProtected, //
    IsFolder,       //
    IsDevice,       //
    NoFolder,       // names: the missing folder
    FolderUnusable, // names: the folder; the system's text
    DeadLink,       //
    TooLarge,       // number: the most bytes
    NoData,         // a pipe without data
    AlreadyThere,   //
    NoFolderOfUser, // names: the variables, of which none is set
    // Libraries and the programs that load them
    LibraryMissing,  // or one that it needs
    NotLoadable,     // no library that this program can load
    NoDriverLibrary, // for any word size
    HelperMissing,   // names: the program; number: bits
    HelperOfOther,   // names: the program, which is of another version
    LacksFunctions,  // names
    // A driver in a separate process
    Overrun,          // it wrote beyond a buffer
    NoAnswer,         // number: milliseconds
    InvalidAnswer,    //
    ConnectionClosed, //
    EndedByUser,      // while it did not answer
    Exited,           // number: its exit status
    Crashed,          // number: of the signal, or 0; the system's text
    // Simulated keyboards
    InUse,           // by another program
    OtherKind,       // number: the offset of the kind; names: its letters as expected
    OtherVersion,    // number: the offset of the version; names: the known one
    EndsTooEarly,    // number: the offset of the end
    WrongSize,       // of the content. number: its offset; names: the bytes expected and found
    WrongChecksum,   // number: its offset
    WrongParts,      // number: the offset from which they are wrong
    WrongMemory,     // the memory in the file. number: its bytes
    InvalidModel,    // in the file
    IsKeyboard,      // the file to save in or to load is the keyboard's own
    OfOtherKeyboard, // names: the model of its parameters, that of the keyboard
    NoSuchModel,     // names: the built-in ones
};
[[nodiscard]] constexpr Obstacle LastOf(Obstacle) {
    return Obstacle::NoSuchModel;
}

// Their names for programs, "write", "no-folder"; the empty text for None.
[[nodiscard]] std::string_view CodeOf(Deed deed);
[[nodiscard]] std::string_view CodeOf(Obstacle obstacle);

struct Problem {
    Deed deed = Deed::None;
    std::string subject{}; // a file, program or library, or a driver's function; may be empty
    Obstacle obstacle = Obstacle::None;
    std::vector<std::string> names{};
    std::int64_t number = 0;
    std::string system{}; // as the system or a driver words it

    bool operator==(const Problem&) const = default;
};

// "till.json cannot be written: it is a folder", "QXCFG_Init: the driver crashed (...)".
[[nodiscard]] std::string WordsOf(const Problem& problem);

// "crashed (signal 11, Segmentation fault)", "ended its process with status 3".
[[nodiscard]] std::string HowItEnded(const Problem& problem);

class ProblemError : public std::runtime_error {
public:
    explicit ProblemError(Problem problem)
        : std::runtime_error(WordsOf(problem)), m_problem(std::move(problem)) {}
    [[nodiscard]] const Problem& What() const { return m_problem; }

private:
    Problem m_problem;
};

// That of a ProblemError; of any other exception its text, as the system's.
[[nodiscard]] Problem ProblemOf(const std::exception& error);

} // namespace qx::files
