// PosCodePage: one code page, 256 bytes, from a file on the PC or from the keyboard.
//
// Page positions count from 1 to 256; a new page is all zeros.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/platform/Platform.h"

#include <array>
#include <string>

namespace qx {

class QXKeyboardAccess;

class PosCodePage {
public:
    // The platform's services must outlive this object.
    explicit PosCodePage(const Platform& platform = {}) : m_platform(platform) {}

    // The byte at page position nIndex; 0 outside 1 to 256.
    [[nodiscard]] Byte GetByte(Integer nIndex) const;
    // Whether all bytes are equal; false if there is no other page.
    [[nodiscard]] bool IsEqualPage(const PosCodePage* oPage) const;

    // Reads the page from the first 256 bytes of a file, whose path is UTF-8. False if the file
    // cannot be opened or is shorter; the page then keeps the bytes read so far.
    bool LoadPageFromFile(const std::string& sPath);
    // Reads the page from the keyboard, in a separate transfer that clears the request list. Shows
    // the wait pointer meanwhile. False without a keyboard. The transfer's status is ignored: a
    // byte that the driver refuses to read is 0.
    bool LoadPageFromKeyboard(QXKeyboardAccess* oKeyboard);

private:
    Platform m_platform;
    std::array<Byte, kCodePageSize> m_bytes{};
};

} // namespace qx
