// The library as hosts know it, and everything its type library contains.
#pragma once

#include "com/Class.h"

#include <span>
#include <string_view>

namespace qx::com {

inline constexpr std::string_view kLibraryName = "QXControls";
inline constexpr std::string_view kLibraryTitle = "QXControls: POS keyboard controls";
inline constexpr std::string_view kLibraryVersion = "1.0";
inline constexpr std::string_view kLibraryId = "{8D6FFDE2-7BDE-4BBA-A043-DEA500F3AA72}";

// In the order of the type library.
[[nodiscard]] std::span<const Class* const> Classes();
[[nodiscard]] std::span<const Enumeration* const> Enumerations();

} // namespace qx::com
