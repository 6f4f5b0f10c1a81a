// The common format of the simulated keyboard's files: kind, size, checksum and content.
//
//     offset 0   6 bytes   the kind, in letters
//            6   2 bytes   the format's version, in decimal digits
//            8   4 bytes   size of the content, little-endian
//           12   4 bytes   CRC-32 of the content (as in IEEE 802.3), little-endian
//           16             the content: parts, each after its size (4 bytes, little-endian)
#pragma once

#include "simulator/Status.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace qx::sim {

inline constexpr std::string_view kSealVersion = "01";

struct SealedKind {
    std::string_view letters;
    std::size_t parts;
};
inline constexpr SealedKind kKeyboardFile{"QXKEYB", 4};
inline constexpr SealedKind kProgramFile{"QXPROG", 1};
inline constexpr SealedKind kChipcardProgramFile{"QXCHIP", 1};
inline constexpr SealedKind kParameterFile{"QXPARA", 2};

// The bytes of the file with these parts; the kind determines their number.
[[nodiscard]] std::string Seal(const SealedKind& kind, const std::vector<std::string>& parts);

// The parts of such a file. Throws files::ProblemError with the obstacle and its offset.
[[nodiscard]] std::vector<std::string> Unseal(const SealedKind& kind, std::string bytes);
// The parts of the file. Throws Failure with the status if it is not such a file, and
// std::runtime_error if it cannot be read.
[[nodiscard]] std::vector<std::string> UnsealFile(const SealedKind& kind,
                                                  const std::filesystem::path& file, Status status);

// The first part, for a look at a file before it is opened: nothing after it is read, and the
// checksum is not checked. Throws files::ProblemError if the file does not begin like this kind.
[[nodiscard]] std::string FirstPart(const SealedKind& kind, const std::filesystem::path& file);

} // namespace qx::sim
