#include "qxcontrols/pos/PosCodePage.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/platform/FileAccess.h"

#include <algorithm>

namespace qx {

namespace {

// Shows the wait pointer during its lifetime.
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
    return nIndex < 1 || nIndex > kCodePageSize ? Byte{0}
                                                : m_bytes[static_cast<std::size_t>(nIndex - 1)];
}

bool PosCodePage::IsEqualPage(const PosCodePage* oPage) const {
    Trace("PosCodePage.IsEqualPage");
    return oPage != nullptr && m_bytes == oPage->m_bytes;
}

bool PosCodePage::LoadPageFromFile(const std::string& sPath) {
    Trace("PosCodePage.LoadPageFromFile");
    const auto bytes = ReadFile(sPath, m_bytes.size());
    if (!bytes)
        return false;
    std::transform(bytes->begin(), bytes->end(), m_bytes.begin(),
                   [](char byte) { return static_cast<Byte>(byte); });
    return bytes->size() == m_bytes.size();
}

bool PosCodePage::LoadPageFromKeyboard(QXKeyboardAccess* oKeyboard) {
    Trace("PosCodePage.LoadPageFromKeyboard");
    if (oKeyboard == nullptr)
        return false;
    const Waiting waiting(*m_platform.waitPointer);
    oKeyboard->MemRequestClean();
    oKeyboard->MemRequestAdd(MODULE_KEYBOARD, kCodePageAddress, kCodePageSize);
    static_cast<void>(oKeyboard->Upload());
    Long address = kCodePageAddress;
    for (Byte& byte : m_bytes)
        byte = oKeyboard->ReadByteFromMem(address++);
    return true;
}

} // namespace qx
