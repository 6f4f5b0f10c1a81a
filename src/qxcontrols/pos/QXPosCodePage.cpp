#include "qxcontrols/pos/QXPosCodePage.h"

#include "qxcontrols/common/Trace.h"

namespace qx {

QXPosCodePage::QXPosCodePage(const Platform& platform)
    : m_keyboardPage(platform), m_filePage(platform) {
    Trace("QXPosCodePage.UserControl_Initialize");
}

QXPosCodePage::~QXPosCodePage() {
    Trace("QXPosCodePage.UserControl_Terminate");
}

bool QXPosCodePage::PagesAreEqual() const {
    Trace("QXPosCodePage.PagesAreEqual");
    return m_keyboardPage.IsEqualPage(&m_filePage);
}

} // namespace qx
