// qxconf: the command line over the host layer.
#pragma once

#include "cli/Context.h"

#include <string>
#include <vector>

namespace qx::cli {

// Runs one command (the arguments without the program's name) and returns the exit status: 0 done,
// 1 a difference was found or a batch was ended early, 2 wrong usage, 3 the keyboard could not be
// opened, 4 a transfer or file operation failed, 5 the read-back after a download differs, 6 a
// document, layout or model is invalid.
[[nodiscard]] int Run(const std::vector<std::string>& arguments, const Streams& streams,
                      const Surroundings& surroundings = {});

} // namespace qx::cli
