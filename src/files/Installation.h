// Installation: the files installed with the running program.
//
// An installation can be moved as a whole: its files are found relative to the program. In the
// build tree, and on Windows, all programs and modules are in one folder.
#pragma once

#include <filesystem>
#include <string>

namespace qx::files {

// A program started by other programs, such as "qxdriverhost". It need not exist.
[[nodiscard]] std::filesystem::path HelperProgram(const std::string& name);

// A library loaded on demand, by file name. It need not exist.
[[nodiscard]] std::filesystem::path ModuleFile(const std::string& name);

// A folder of data, such as "layouts": that of this installation, or else the first one in the
// system's data folders (XDG_DATA_DIRS). If there is none, returns the missing one of this
// installation.
[[nodiscard]] std::filesystem::path DataFolder(const std::string& name);

} // namespace qx::files
