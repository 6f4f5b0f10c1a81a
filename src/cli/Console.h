// Console: the only place where text leaves the program, to standard output and standard error.
//
// Results go to standard output, everything else to standard error. Text is written line by line,
// and only printable characters of a line reach the terminal.
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
    int columns = 0;       // if standard error is a terminal; otherwise 0
    bool hasColor = false; // whether the terminal supports colours
};

class Console {
public:
    explicit Console(Streams streams) : m_streams(streams) {}

    // Suppress everything except results and errors.
    bool isQuiet = false;

    void Result(const Lines& lines);
    void Result(const host::Json& json);
    // A text of the program itself, such as help.
    void Text(const std::string& text);

    // Writes a note to standard error, on several lines if the text has several.
    void Note(std::string_view text);
    void Error(std::string_view text);

    // Draws the progress of a step, replacing the previous drawing.
    void ShowProgress(std::string_view step, int percent);

    // Flushes the output. Throws host::Error(FileFailed) if any of it could not be written.
    void Flush();

private:
    void EndProgress();

    Streams m_streams;
    std::string m_progress; // currently shown
};

} // namespace qx::cli
