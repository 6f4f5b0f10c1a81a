// The word size of a driver library, which must match that of the program that loads it.
#pragma once

#include <filesystem>
#include <optional>

namespace qx::driverhost {

inline constexpr int kOwnWordSize = 8 * sizeof(void*); // of this program

// 32 or 64 according to the file's header, for Windows and Linux libraries. None for any other or
// unreadable file. A name without a folder is not searched for elsewhere.
[[nodiscard]] std::optional<int> WordSizeOf(const std::filesystem::path& library);

} // namespace qx::driverhost
