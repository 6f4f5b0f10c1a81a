#include "simulator/SealedFile.h"

#include <cstdint>
#include <stdexcept>

namespace qx::sim {

namespace {

constexpr std::size_t kKindSize = 8;
constexpr std::size_t kNumberSize = 4;
constexpr std::size_t kSizeOffset = kKindSize;
constexpr std::size_t kChecksumOffset = kSizeOffset + kNumberSize;
constexpr std::size_t kContentOffset = kChecksumOffset + kNumberSize;

std::uint32_t Crc32(std::string_view bytes) {
    constexpr std::uint32_t kPolynomial = 0xEDB88320U;
    std::uint32_t crc = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        crc ^= static_cast<Byte>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? kPolynomial : 0U);
    }
    return ~crc;
}

std::string Number(std::size_t value) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(static_cast<Byte>(value >> shift));
    return bytes;
}

std::size_t NumberAt(std::string_view bytes, std::size_t offset) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < kNumberSize; ++i)
        value |= std::size_t{static_cast<Byte>(bytes[offset + i])} << (8 * i);
    return value;
}

} // namespace

std::string Seal(std::string_view kind, std::string_view content) {
    return std::string(kind) + Number(content.size()) + Number(Crc32(content)) +
           std::string(content);
}

std::string Unseal(std::string_view kind, std::string_view bytes) {
    if (!bytes.starts_with(kind))
        throw std::runtime_error("offset 0: not a file of the kind " + std::string(kind));
    if (bytes.size() < kContentOffset)
        throw std::runtime_error("offset " + std::to_string(bytes.size()) +
                                 ": the file ends within its head");
    const std::string_view content = bytes.substr(kContentOffset);
    const std::size_t size = NumberAt(bytes, kSizeOffset);
    if (content.size() != size)
        throw std::runtime_error("offset " + std::to_string(kSizeOffset) + ": " +
                                 std::to_string(size) + " bytes of content are announced, " +
                                 std::to_string(content.size()) + " are there");
    if (NumberAt(bytes, kChecksumOffset) != Crc32(content))
        throw std::runtime_error("offset " + std::to_string(kChecksumOffset) +
                                 ": the checksum does not fit the content");
    return std::string(content);
}

std::string Join(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += Number(text.size()) + text;
    return joined;
}

std::vector<std::string> Split(std::string_view joined, std::size_t count) {
    std::vector<std::string> texts;
    std::size_t offset = 0;
    while (texts.size() < count && joined.size() - offset >= kNumberSize) {
        const std::size_t size = NumberAt(joined, offset);
        offset += kNumberSize;
        if (size > joined.size() - offset)
            break;
        texts.emplace_back(joined.substr(offset, size));
        offset += size;
    }
    if (texts.size() != count || offset != joined.size())
        throw std::runtime_error("offset " + std::to_string(kContentOffset + offset) +
                                 ": the parts do not add up");
    return texts;
}

} // namespace qx::sim
