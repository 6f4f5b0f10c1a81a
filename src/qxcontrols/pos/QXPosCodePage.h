// QXPosCodePage: reports whether the keyboard has the same code page as the PC.
//
// The invisible control owns one page from each source, copied when set; the host loads them and
// shows the result.
#pragma once

#include "qxcontrols/pos/PosCodePage.h"

namespace qx {

class QXPosCodePage {
public:
    explicit QXPosCodePage(const Platform& platform = {});
    ~QXPosCodePage();
    QXPosCodePage(const QXPosCodePage&) = delete;
    QXPosCodePage& operator=(const QXPosCodePage&) = delete;

    [[nodiscard]] PosCodePage& KeyboardPage() { return m_keyboardPage; }
    void SetKeyboardPage(const PosCodePage& page) { m_keyboardPage = page; }
    [[nodiscard]] PosCodePage& FilePage() { return m_filePage; }
    void SetFilePage(const PosCodePage& page) { m_filePage = page; }

    [[nodiscard]] bool PagesAreEqual() const;

private:
    PosCodePage m_keyboardPage;
    PosCodePage m_filePage;
};

} // namespace qx
