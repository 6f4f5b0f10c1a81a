#include "driverhost/WordSize.h"

#include "qxcontrols/common/LittleEndian.h"

#include <array>
#include <fstream>
#include <string_view>

namespace qx::driverhost {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kPlaceOfHeader = 0x3C; // where a Windows program stores its header's offset

template <std::size_t kSize>
std::optional<std::array<char, kSize>> BytesAt(std::ifstream& file, std::streamoff place) {
    std::array<char, kSize> bytes{};
    if (!file.seekg(place) || !file.read(bytes.data(), kSize))
        return std::nullopt;
    return bytes;
}

template <std::size_t kSize>
std::string_view Text(const std::array<char, kSize>& bytes) {
    return {bytes.data(), kSize};
}

std::optional<int> OfWindows(std::ifstream& file) {
    const auto place = BytesAt<4>(file, kPlaceOfHeader);
    if (!place)
        return std::nullopt;
    const auto header = BytesAt<6>(file, FromLittleEndian<std::uint32_t>(place->data()));
    if (!header || !Text(*header).starts_with("PE\0\0"sv))
        return std::nullopt;
    switch (FromLittleEndian<std::uint16_t>(header->data() + 4)) { // the machine
    case 0x014C:
        return 32;
    case 0x8664:
        return 64;
    default:
        return std::nullopt;
    }
}

} // namespace

std::optional<int> WordSizeOf(const std::filesystem::path& library) {
    std::ifstream file(library, std::ios::binary);
    const auto start = BytesAt<5>(file, 0);
    if (!start)
        return std::nullopt;
    if (Text(*start).starts_with("MZ"))
        return OfWindows(file);
    if (Text(*start) == "\x7F"
                        "ELF\1"sv)
        return 32;
    if (Text(*start) == "\x7F"
                        "ELF\2"sv)
        return 64;
    return std::nullopt;
}

} // namespace qx::driverhost
