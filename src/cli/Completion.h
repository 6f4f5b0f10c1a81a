// Completion: the words that can come next in a command line, and the shells' scripts that ask for
// them.
#pragma once

#include "cli/Command.h"

namespace qx::cli {

// What can stand in place of the last one of the words that follow the program's name. One
// candidate ":files" or ":folders" stands for those that the shell finds.
[[nodiscard]] std::vector<std::string> Candidates(const Command& program, Context& context,
                                                  const std::vector<std::string>& words);

// The script for "bash", "zsh" or "fish".
[[nodiscard]] std::string CompletionScript(const std::string& shell);

} // namespace qx::cli
