#include "simulator/SealedFile.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "qxcontrols/common/LittleEndian.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <utility>

namespace qx::sim {

namespace {

using files::Obstacle;
using Size = std::uint32_t;

constexpr std::size_t kVersionOffset = kKeyboardFile.letters.size();
constexpr std::size_t kSizeOffset = kVersionOffset + kSealVersion.size();
constexpr std::size_t kChecksumOffset = kSizeOffset + sizeof(Size);
constexpr std::size_t kContentOffset = kChecksumOffset + sizeof(Size);
static_assert(kContentOffset == 16);

// The CRC-32 of each byte value followed by 0 to 7 zero bytes, to process eight bytes of a file in
// one step.
constexpr auto kCrcTables = [] {
    constexpr Size kPolynomial = 0xEDB88320U;
    std::array<std::array<Size, 256>, 8> tables{};
    for (Size byte = 0; byte < 256; ++byte) {
        Size crc = byte;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1U) ^ ((crc & 1U) != 0 ? kPolynomial : 0U);
        tables[0][byte] = crc;
    }
    for (std::size_t zeros = 1; zeros < 8; ++zeros)
        for (Size byte = 0; byte < 256; ++byte) {
            const Size before = tables[zeros - 1][byte];
            tables[zeros][byte] = (before >> 8U) ^ tables[0][before & 0xFFU];
        }
    return tables;
}();

Size Crc32(std::string_view bytes) {
    Size crc = 0xFFFFFFFFU;
    for (; bytes.size() >= 8; bytes.remove_prefix(8)) {
        crc ^= FromLittleEndian<Size>(bytes.data());
        Size next = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            next ^= kCrcTables[7 - i][(crc >> (8 * i)) & 0xFFU];
            next ^= kCrcTables[3 - i][static_cast<Byte>(bytes[4 + i])];
        }
        crc = next;
    }
    for (const char byte : bytes)
        crc = (crc >> 8U) ^ kCrcTables[0][(crc ^ static_cast<Byte>(byte)) & 0xFFU];
    return ~crc;
}

[[noreturn]] void Refuse(std::size_t offset, Obstacle obstacle,
                         std::vector<std::string> names = {}) {
    throw files::ProblemError({.obstacle = obstacle,
                               .names = std::move(names),
                               .number = static_cast<std::int64_t>(offset)});
}

[[noreturn]] void RefuseKind(const SealedKind& kind) {
    Refuse(0, Obstacle::OtherKind, {std::string(kind.letters)});
}

// The content of the file, once its header has been verified.
std::string_view Content(const SealedKind& kind, std::string_view bytes) {
    if (!bytes.starts_with(kind.letters))
        RefuseKind(kind);
    if (bytes.size() < kContentOffset)
        Refuse(bytes.size(), Obstacle::EndsTooEarly);
    const std::string_view version = bytes.substr(kVersionOffset, kSealVersion.size());
    if (version != kSealVersion)
        Refuse(kVersionOffset, Obstacle::OtherVersion, {std::string(kSealVersion)});
    const std::string_view content = bytes.substr(kContentOffset);
    const auto size = FromLittleEndian<Size>(bytes.data() + kSizeOffset);
    if (content.size() != size)
        Refuse(kSizeOffset, Obstacle::WrongSize,
               {std::to_string(size), std::to_string(content.size())});
    if (FromLittleEndian<Size>(bytes.data() + kChecksumOffset) != Crc32(content))
        Refuse(kChecksumOffset, Obstacle::WrongChecksum);
    return content;
}

} // namespace

std::string Seal(const SealedKind& kind, const std::vector<std::string>& parts) {
    std::string content;
    for (const std::string& part : parts)
        content += LittleEndian(static_cast<Size>(part.size())) + part;
    return std::string(kind.letters) + std::string(kSealVersion) +
           LittleEndian(static_cast<Size>(content.size())) + LittleEndian(Crc32(content)) + content;
}

std::vector<std::string> Unseal(const SealedKind& kind, std::string bytes) {
    std::string_view rest = Content(kind, bytes);
    std::vector<std::string_view> found;
    while (found.size() < kind.parts && rest.size() >= sizeof(Size)) {
        const auto size = FromLittleEndian<Size>(rest.data());
        if (size > rest.size() - sizeof(Size))
            break;
        found.push_back(rest.substr(sizeof(Size), size));
        rest.remove_prefix(sizeof(Size) + size);
    }
    if (found.size() != kind.parts || !rest.empty())
        Refuse(bytes.size() - rest.size(), Obstacle::WrongParts);
    // The longest part stays where it was read.
    const auto longest = std::max_element(
        found.begin(), found.end(),
        [](std::string_view one, std::string_view other) { return one.size() < other.size(); });
    std::vector<std::string> parts(found.size());
    for (auto part = found.begin(); part != found.end(); ++part)
        if (part != longest)
            parts[static_cast<std::size_t>(part - found.begin())] = *part;
    const auto start = static_cast<std::size_t>(longest->data() - bytes.data());
    bytes.resize(start + longest->size());
    bytes.erase(0, start);
    parts[static_cast<std::size_t>(longest - found.begin())] = std::move(bytes);
    return parts;
}

std::vector<std::string> UnsealFile(const SealedKind& kind, const std::filesystem::path& file,
                                    Status status) {
    std::string bytes = files::ReadFile(file);
    try {
        return Unseal(kind, std::move(bytes));
    } catch (const files::ProblemError& error) {
        files::Problem problem = error.What();
        problem.deed = files::Deed::Read;
        problem.subject = files::TextOf(file);
        throw Failure(status, std::move(problem));
    }
}

std::string FirstPart(const SealedKind& kind, const std::filesystem::path& file) {
    constexpr Size kMaxSize = 64 * 1024;
    std::ifstream stream;
    if (std::filesystem::is_regular_file(file))
        stream.open(file, std::ios::binary);
    std::array<char, kContentOffset + sizeof(Size)> head{};
    stream.read(head.data(), head.size());
    if (!std::string_view(head.data(), head.size()).starts_with(kind.letters))
        RefuseKind(kind);
    std::string part(std::min(FromLittleEndian<Size>(head.data() + kContentOffset), kMaxSize), 0);
    if (!stream.read(part.data(), static_cast<std::streamsize>(part.size())))
        Refuse(head.size(), Obstacle::EndsTooEarly);
    return part;
}

} // namespace qx::sim
