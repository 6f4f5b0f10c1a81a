#include "host/CopiedKeyboard.h"

#include "qxcontrols/device/MemoryMap.h"

#include <algorithm>

namespace qx::host {

namespace {

constexpr std::int32_t kDone = 0;
constexpr std::int32_t kNotInCopy = 1; // an address that was not copied

} // namespace

CopiedKeyboard::CopiedKeyboard(KeyboardContent content) : m_content(std::move(content)) {
    Stretches known;
    const std::string& identification = m_content.identity.identification;
    known.Add(kIdentificationAddress, static_cast<Long>(identification.size()));
    known.Add(kCapabilityAddress, 1);
    for (const ContentPiece& piece : m_content.pieces)
        known.Add(piece.address, static_cast<Long>(piece.bytes.size()));
    for (const Stretch& stretch : known.List())
        m_image.emplace(stretch.address, std::string(static_cast<std::size_t>(stretch.size), '\0'));
    PutIntoImage(kIdentificationAddress, identification);
    PutIntoImage(kCapabilityAddress,
                 std::string(1, static_cast<char>(m_content.identity.capabilities)));
    FillImage();
}

void CopiedKeyboard::FillImage() {
    for (const ContentPiece& piece : m_content.pieces)
        PutIntoImage(piece.address, piece.bytes);
}

CopiedKeyboard::Block* CopiedKeyboard::Find(Long address, Long size) {
    auto block = m_image.upper_bound(address);
    if (size < 0 || block == m_image.begin())
        return nullptr;
    --block;
    const auto end =
        static_cast<std::int64_t>(block->first) + static_cast<std::int64_t>(block->second.size());
    return std::int64_t{address} + size <= end ? &*block : nullptr;
}

void CopiedKeyboard::PutIntoImage(Long address, std::string_view bytes) {
    if (Block* block = bytes.empty() ? nullptr : Find(address, static_cast<Long>(bytes.size())))
        block->second.replace(static_cast<std::size_t>(address - block->first), bytes.size(),
                              bytes);
}

std::int32_t CopiedKeyboard::QXCFG_SetCommandDelta(std::int32_t /*lDelta*/) {
    return kDone;
}
std::int32_t CopiedKeyboard::QXCFG_Init() {
    return kDone;
}

std::int32_t CopiedKeyboard::QXCFG_ConfigDirectorySize() {
    return static_cast<std::int32_t>(m_content.identity.directory.size());
}
std::int32_t CopiedKeyboard::QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex,
                                                           std::int32_t* module,
                                                           std::int32_t* address) {
    const auto& directory = m_content.identity.directory;
    if (nIndex < 0 || static_cast<std::size_t>(nIndex) >= directory.size())
        return kNotInCopy;
    *module = directory[static_cast<std::size_t>(nIndex)].first;
    *address = directory[static_cast<std::size_t>(nIndex)].second;
    return kDone;
}

std::int32_t CopiedKeyboard::QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                             std::int32_t lSize) {
    if (lSize == 0)
        return kDone;
    const Block* block = Find(lAddress, lSize);
    if (block == nullptr)
        return kNotInCopy;
    block->second.copy(buffer, static_cast<std::size_t>(lSize),
                       static_cast<std::size_t>(lAddress - block->first));
    return kDone;
}
std::int32_t CopiedKeyboard::QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                              std::int32_t lSize) {
    if (lSize != 0 && Find(lAddress, lSize) == nullptr)
        return kNotInCopy;
    PutIntoImage(lAddress, {buffer, static_cast<std::size_t>(lSize)});
    return kDone;
}

std::int32_t CopiedKeyboard::ReadNumber(Long address, std::uint32_t& value, Long size) {
    char bytes[sizeof value] = {};
    const std::int32_t status = QXCFG_ImageRead(address, bytes, size);
    value = 0;
    for (Long i = size; i-- > 0;)
        value = value << 8U | static_cast<unsigned char>(bytes[i]);
    return status;
}
std::int32_t CopiedKeyboard::WriteNumber(Long address, std::uint32_t value, Long size) {
    char bytes[sizeof value] = {};
    for (Long i = 0; i < size; ++i, value >>= 8U)
        bytes[i] = static_cast<char>(value & 0xFFU);
    return QXCFG_ImageWrite(address, bytes, size);
}

std::int32_t CopiedKeyboard::QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) {
    std::uint32_t number = 0;
    const std::int32_t status = ReadNumber(lAddress, number, 1);
    *value = static_cast<std::uint8_t>(number);
    return status;
}
std::int32_t CopiedKeyboard::QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) {
    return WriteNumber(lAddress, value, 1);
}
std::int32_t CopiedKeyboard::QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) {
    std::uint32_t number = 0;
    const std::int32_t status = ReadNumber(lAddress, number, 2);
    *value = static_cast<std::int16_t>(number);
    return status;
}
std::int32_t CopiedKeyboard::QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) {
    return WriteNumber(lAddress, static_cast<std::uint32_t>(value), 2);
}
std::int32_t CopiedKeyboard::QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) {
    std::uint32_t number = 0;
    const std::int32_t status = ReadNumber(lAddress, number, 4);
    *value = static_cast<std::int32_t>(number);
    return status;
}
std::int32_t CopiedKeyboard::QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) {
    return WriteNumber(lAddress, static_cast<std::uint32_t>(value), 4);
}

std::int32_t CopiedKeyboard::QXCFG_MemRequestClean() {
    m_requests.clear();
    return kDone;
}
std::int32_t CopiedKeyboard::QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                                 std::int32_t lSize) {
    if (lSize != 0 && Find(lAddress, lSize) == nullptr)
        return kNotInCopy;
    m_requests.push_back({static_cast<KeyboardModuleIDs>(nModule), lAddress, lSize});
    return kDone;
}

// Loads everything that was copied, which is never less than was requested.
std::int32_t CopiedKeyboard::QXCFG_ImageLoad() {
    FillImage();
    return kDone;
}

std::int32_t CopiedKeyboard::QXCFG_ImageSave() {
    for (const Request& request : m_requests) {
        std::string bytes(static_cast<std::size_t>(request.size), '\0');
        QXCFG_ImageRead(request.address, bytes.data(), request.size);
        m_content.Overwrite(request.address, bytes);
    }
    m_saved = m_requests;
    return kDone;
}

} // namespace qx::host
