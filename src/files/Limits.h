// Size limits for files: larger than any that these programs write, and small enough to be read at
// once. Larger files are refused before they are read.
#pragma once

#include <cstddef>

namespace qx::files {

inline constexpr std::size_t kMostOfModel = 1U << 20U;
inline constexpr std::size_t kMostOfCaptions = 1U << 20U;
inline constexpr std::size_t kMostOfDocument = 4U << 20U;
inline constexpr std::size_t kMostOfPreferences = 4U << 20U;
inline constexpr std::size_t kMostOfProgram = 16U << 20U; // of a keyboard
inline constexpr std::size_t kMostOfJob = 16U << 20U;
inline constexpr std::size_t kMostOfRecord = 64U << 20U; // including the report of a batch
inline constexpr std::size_t kMostOfAny = 64U << 20U;    // libraries and keyboard files

} // namespace qx::files
