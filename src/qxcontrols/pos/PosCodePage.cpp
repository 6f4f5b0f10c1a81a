#include "qxcontrols/pos/PosCodePage.h"

#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/device/Trace.h"

#include <exception>
#include <filesystem>
#include <fstream>

namespace qx {

namespace {

// Shows the wait pointer while it lives.
class Waiting {
public:
    explicit Waiting(WaitPointer& pointer) : m_pointer(pointer) { m_pointer.Show(); }
    ~Waiting() { m_pointer.Restore(); }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;

private:
    WaitPointer& m_pointer;
};

} // namespace

Byte PosCodePage::GetByte(Integer nIndex) const {
    return nIndex < 1 || nIndex > kSize ? Byte{0} : m_bytes[static_cast<std::size_t>(nIndex - 1)];
}

bool PosCodePage::IsEqualPage(const PosCodePage* oPage) const {
    Trace("PosCodePage.IsEqualPage");
    return oPage != nullptr && m_bytes == oPage->m_bytes;
}

bool PosCodePage::LoadPageFromFile(const std::string& sPath) {
    Trace("PosCodePage.LoadPageFromFile");
    try {
        std::ifstream file(std::filesystem::path(std::u8string(sPath.begin(), sPath.end())),
                           std::ios::binary);
        for (Byte& byte : m_bytes) {
            char read = 0;
            if (!file.get(read))
                return false;
            byte = static_cast<Byte>(read);
        }
        return true;
    } catch (const std::exception& error) { // a path that the system cannot have
        Trace(std::string("PosCodePage.LoadPageFromFile failed: ") + error.what());
        return false;
    }
}

bool PosCodePage::LoadPageFromKeyboard(QXKeyboardAccess* oKeyboard) {
    Trace("PosCodePage.LoadPageFromKeyboard");
    if (oKeyboard == nullptr)
        return false;
    const Waiting waiting(*m_platform.waitPointer);
    oKeyboard->MemRequestClean();
    oKeyboard->MemRequestAdd(MODULE_KEYBOARD, kAddressInKeyboard, kSize);
    static_cast<void>(oKeyboard->Upload());
    Long address = kAddressInKeyboard;
    for (Byte& byte : m_bytes)
        byte = oKeyboard->ReadByteFromMem(address++);
    return true;
}

} // namespace qx
