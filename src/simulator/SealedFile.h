// The form of all files of the simulated keyboard: a kind, a size, a checksum, and the content.
//
//     offset 0   8 bytes   the kind, in letters
//            8   4 bytes   size of the content, little-endian
//           12   4 bytes   CRC-32 of the content (IEEE 802.3), little-endian
//           16             the content
#pragma once

#include "qxcontrols/common/Types.h"

#include <string>
#include <string_view>
#include <vector>

namespace qx::sim {

// Kinds are 8 characters long.
inline constexpr std::string_view kKeyboardFile = "QXKEYB01";
inline constexpr std::string_view kProgramFile = "QXPROG01";
inline constexpr std::string_view kChipcardProgramFile = "QXCHIP01";
inline constexpr std::string_view kParameterFile = "QXPARA01";

[[nodiscard]] std::string Seal(std::string_view kind, std::string_view content);

// The content of a sealed file. Throws std::runtime_error that says where it is wrong.
[[nodiscard]] std::string Unseal(std::string_view kind, std::string_view bytes);

// Several texts as one, each with its size (4 bytes, little-endian) before it, and back. Split throws
// std::runtime_error when the sizes do not add up to `count` texts.
[[nodiscard]] std::string Join(const std::vector<std::string>& texts);
[[nodiscard]] std::vector<std::string> Split(std::string_view joined, std::size_t count);

} // namespace qx::sim
