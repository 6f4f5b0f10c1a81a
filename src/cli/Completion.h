// Completion: the possible next words of a command line, and the shells' scripts that ask for them.
#pragma once

#include "cli/Command.h"

namespace qx::cli {

// Candidates for the last of the words after the program's name. A single candidate ":files" or
// ":folders" means that the shell should offer files or folders.
[[nodiscard]] std::vector<std::string> Candidates(const Command& program, Context& context,
                                                  const std::vector<std::string>& words);

// The script for "bash", "zsh" or "fish".
[[nodiscard]] std::string CompletionScript(const std::string& shell);

} // namespace qx::cli
