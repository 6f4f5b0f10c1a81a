#include "qxcontrols/platform/GuidCreator.h"

#include <cstddef>
#include <random>

namespace qx {

namespace {

constexpr std::string_view kPattern = "{########-####-####-####-############}";
constexpr std::string_view kDigits = "0123456789ABCDEF";

std::array<Byte, 16> BytesInTextOrder(const Guid& guid) {
    std::array<Byte, 16> bytes{};
    for (std::size_t i = 0; i < 4; ++i)
        bytes[i] = static_cast<Byte>(guid.first >> (24 - 8 * i));
    for (std::size_t i = 0; i < 2; ++i) {
        bytes[4 + i] = static_cast<Byte>(guid.second >> (8 - 8 * i));
        bytes[6 + i] = static_cast<Byte>(guid.third >> (8 - 8 * i));
    }
    for (std::size_t i = 0; i < 8; ++i)
        bytes[8 + i] = guid.rest[i];
    return bytes;
}

Guid FromBytesInTextOrder(const std::array<Byte, 16>& bytes) {
    Guid guid;
    for (std::size_t i = 0; i < 4; ++i)
        guid.first = (guid.first << 8U) | bytes[i];
    for (std::size_t i = 0; i < 2; ++i) {
        guid.second = static_cast<std::uint16_t>((guid.second << 8U) | bytes[4 + i]);
        guid.third = static_cast<std::uint16_t>((guid.third << 8U) | bytes[6 + i]);
    }
    for (std::size_t i = 0; i < 8; ++i)
        guid.rest[i] = bytes[8 + i];
    return guid;
}

} // namespace

std::string ToText(const Guid& guid) {
    const auto bytes = BytesInTextOrder(guid);
    std::string text(kPattern);
    std::size_t nibble = 0;
    for (char& c : text) {
        if (c != '#')
            continue;
        const unsigned byte = bytes[nibble / 2];
        c = kDigits[nibble % 2 == 0 ? byte >> 4U : byte & 0xFU];
        ++nibble;
    }
    return text;
}

std::optional<Guid> GuidFromText(std::string_view sText) {
    if (sText.size() != kPattern.size())
        return std::nullopt;
    std::array<Byte, 16> bytes{};
    std::size_t nibble = 0;
    for (std::size_t i = 0; i < sText.size(); ++i) {
        if (kPattern[i] != '#') {
            if (sText[i] != kPattern[i])
                return std::nullopt;
            continue;
        }
        const char upper =
            sText[i] >= 'a' && sText[i] <= 'f' ? static_cast<char>(sText[i] - 'a' + 'A') : sText[i];
        const auto digit = kDigits.find(upper);
        if (digit == std::string_view::npos)
            return std::nullopt;
        bytes[nibble / 2] = static_cast<Byte>(std::size_t{bytes[nibble / 2]} << 4U | digit);
        ++nibble;
    }
    return FromBytesInTextOrder(bytes);
}

Guid GuidCreator::CreateSafeGuid() {
    std::random_device random;
    std::array<Byte, 16> bytes{};
    for (auto& byte : bytes)
        byte = static_cast<Byte>(random());
    bytes[6] = static_cast<Byte>((bytes[6] & 0x0FU) | 0x40U); // version 4
    bytes[8] = static_cast<Byte>((bytes[8] & 0x3FU) | 0x80U); // variant of RFC 4122
    return FromBytesInTextOrder(bytes);
}

} // namespace qx
