// The common format of the simulated keyboard's files: kind, size, checksum and content.
//
//     offset 0   6 bytes   the kind, in letters
//            6   2 bytes   the format's version, in decimal digits
//            8   4 bytes   size of the content, little-endian
//           12   4 bytes   CRC-32 of the content (as in IEEE 802.3), little-endian
//           16             the content: parts, each after its size (4 bytes, little-endian)
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace qx::sim {

inline constexpr std::string_view kSealVersion = "01";

struct SealedKind {
    std::string_view letters;
    std::size_t parts;
    std::string_view name; // for messages
};
inline constexpr SealedKind kKeyboardFile{"QXKEYB", 4, "a simulated keyboard"};
inline constexpr SealedKind kProgramFile{"QXPROG", 1, "a keyboard's firmware"};
inline constexpr SealedKind kChipcardProgramFile{"QXCHIP", 1, "a chipcard reader's firmware"};
inline constexpr SealedKind kParameterFile{"QXPARA", 2, "a keyboard's parameters"};

// The bytes of the file with these parts; the kind determines their number.
[[nodiscard]] std::string Seal(const SealedKind& kind, const std::vector<std::string>& parts);

// The parts of such a file. Throws std::runtime_error with the offset and kind of an error.
[[nodiscard]] std::vector<std::string> Unseal(const SealedKind& kind, std::string bytes);

// The first part, for a look at a file before it is opened: nothing after it is read, and the
// checksum is not checked. Throws std::runtime_error if the file does not begin like this kind.
[[nodiscard]] std::string FirstPart(const SealedKind& kind, const std::filesystem::path& file);

} // namespace qx::sim
