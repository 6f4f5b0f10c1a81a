// Console: the one place where text leaves the program, to standard output and standard error.
//
// Results go to standard output, everything else to standard error. Text is written line by line,
// and nothing in a line can reach the terminal but characters that are shown.
#pragma once

#include "host/Json.h"

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

namespace qx::cli {

// Lines of text, without their ends.
using Lines = std::vector<std::string>;

struct Streams {
    std::ostream& out;
    std::ostream& err;
    int columns = 0;       // of the terminal that standard error is; 0: it is none
    bool hasColor = false; // whether that shows colours
};

class Console {
public:
    explicit Console(Streams streams) : m_streams(streams) {}

    // Leave out all that is neither a result nor an error.
    bool isQuiet = false;

    void Result(const Lines& lines);
    void Result(const host::Json& json);
    // A text of the program's own, such as help.
    void Text(const std::string& text);

    // Shows something that is no result on standard error; several lines when the text has them.
    void Note(std::string_view text);
    void Error(std::string_view text);

    // Draws how far a step of the work is, over what was drawn before.
    void ShowProgress(std::string_view step, int percent);

    // Sends what has been written on its way. Throws host::Error(FileFailed) when any of it could
    // not be written.
    void Flush();

private:
    void EndProgress();

    Streams m_streams;
    std::string m_progress; // drawn at present
};

} // namespace qx::cli
