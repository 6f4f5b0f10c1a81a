// Installation: the files that come with the running program.
//
// An installation can be moved as a whole: its files are found from where the program lies. In the
// build tree, and on Windows, all programs and modules lie in one folder.
#pragma once

#include <filesystem>
#include <string>

namespace qx::files {

// A program that other programs start, such as "qxdriverhost". It need not exist.
[[nodiscard]] std::filesystem::path HelperProgram(const std::string& name);

// A library that is loaded on demand, by its file name. It need not exist.
[[nodiscard]] std::filesystem::path ModuleFile(const std::string& name);

// A folder of data, such as "layouts": that of this installation, else the first one in the
// system's data folders (XDG_DATA_DIRS). Where there is none at all, the one that is missing here.
[[nodiscard]] std::filesystem::path DataFolder(const std::string& name);

} // namespace qx::files
