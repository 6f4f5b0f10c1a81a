#include "qxcontrols/pos/QXPosCodePage.h"

#include "qxcontrols/device/Trace.h"

namespace qx {

QXPosCodePage::QXPosCodePage(const Platform& platform)
    : m_keyboardPage(platform), m_filePage(platform) {
    Trace("QXPosCodePage.UserControl_Initialize");
}

QXPosCodePage::~QXPosCodePage() {
    Trace("QXPosCodePage.UserControl_Terminate");
}

} // namespace qx
