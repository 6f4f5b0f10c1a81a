// Parser: finds the command that a command line asks for, and its options' values.
#pragma once

#include "cli/Command.h"

namespace qx::cli {

// What a command line asks for: a command to run, or else a text to show.
struct Parsed {
    const Command* command = nullptr;
    std::string text;
};

// Parses the arguments for the program, whose own options may stand anywhere. The values are in
// the targets of the options then. Throws host::Error(Usage).
[[nodiscard]] Parsed Parse(const Command& program, const std::string& version,
                           const std::vector<std::string>& arguments);

// The help of the command that these words name, of the program when there are none. Throws
// host::Error(Usage) when there is no such command.
[[nodiscard]] std::string HelpFor(const Command& program, const std::vector<std::string>& words);

} // namespace qx::cli
