// Parser: finds the command in a command line, and the values of its options.
#pragma once

#include "cli/Command.h"

namespace qx::cli {

// The meaning of a command line: a command to run, or a text to show.
struct Parsed {
    const Command* command = nullptr;
    std::string text;
};

// Parses the arguments; the program's own options may be anywhere. Stores the values in the
// options' targets. Throws host::Error(Usage).
[[nodiscard]] Parsed Parse(const Command& program, const std::string& version,
                           const std::vector<std::string>& arguments);

// The help for the command with these words, or for the program if there are none. Throws
// host::Error(Usage) for an unknown command.
[[nodiscard]] std::string HelpFor(const Command& program, const std::vector<std::string>& words);

} // namespace qx::cli
