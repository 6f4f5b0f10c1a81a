// CopiedKeyboard: a driver for a copy of a keyboard's contents.
//
// Writes are tried out on it first, and saved bytes are decoded through it. It supports only the
// calls that transfers need.
#pragma once

#include "host/KeyboardContent.h"
#include "host/Stretches.h"
#include "qxcontrols/device/RefusingDriver.h"

#include <map>

namespace qx::host {

class CopiedKeyboard : public RefusingDriver {
public:
    struct Request {
        KeyboardModuleIDs module;
        Long address;
        Long size;
    };

    explicit CopiedKeyboard(KeyboardContent content);

    // The present contents of the copy.
    [[nodiscard]] const KeyboardContent& Content() const { return m_content; }
    // The requests that the last transfer to the copy has moved, in order.
    [[nodiscard]] const std::vector<Request>& LastSaved() const { return m_saved; }

    std::int32_t QXCFG_SetCommandDelta(std::int32_t lDelta) override;
    std::int32_t QXCFG_Init() override;
    std::int32_t QXCFG_ConfigDirectorySize() override;
    std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                               std::int32_t* address) override;
    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override;
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override;
    std::int32_t QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) override;
    std::int32_t QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) override;
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override;
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override;
    std::int32_t QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) override;
    std::int32_t QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) override;
    std::int32_t QXCFG_MemRequestClean() override;
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override;
    std::int32_t QXCFG_ImageLoad() override;
    std::int32_t QXCFG_ImageSave() override;

private:
    using Block = std::pair<const Long, std::string>;
    // The image's block that has all these bytes; null when there is none.
    [[nodiscard]] Block* Find(Long address, Long size);
    void PutIntoImage(Long address, std::string_view bytes);
    void FillImage();
    std::int32_t ReadNumber(Long address, std::uint32_t& value, Long size);
    std::int32_t WriteNumber(Long address, std::uint32_t value, Long size);

    KeyboardContent m_content;
    std::map<Long, std::string> m_image; // by address, blocks that do not touch
    std::vector<Request> m_requests;
    std::vector<Request> m_saved;
};

} // namespace qx::host
