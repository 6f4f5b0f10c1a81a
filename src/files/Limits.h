// How large files can be: more than any that these programs write, and little enough to be read at
// once. Larger ones are refused before they are read.
#pragma once

#include <cstddef>

namespace qx::files {

inline constexpr std::size_t kMostOfModel = 1U << 20U;
inline constexpr std::size_t kMostOfDocument = 4U << 20U;
inline constexpr std::size_t kMostOfPreferences = 4U << 20U;
inline constexpr std::size_t kMostOfJob = 16U << 20U;
inline constexpr std::size_t kMostOfRecord = 64U << 20U; // the report of a batch among them
inline constexpr std::size_t kMostOfAny = 64U << 20U;    // libraries and keyboard files

} // namespace qx::files
