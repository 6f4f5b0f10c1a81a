// The word size of a driver library, which has to be that of the program that loads it.
#pragma once

#include <filesystem>
#include <optional>

namespace qx::driverhost {

inline constexpr int kOwnWordSize = 8 * sizeof(void*); // of this program

// 32 or 64, as the file's header says, of libraries for Windows and for Linux. None for any other
// file, and for one that cannot be read. A name without a folder is looked for nowhere else.
[[nodiscard]] std::optional<int> WordSizeOf(const std::filesystem::path& library);

} // namespace qx::driverhost
