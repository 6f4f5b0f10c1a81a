#include "qxcontrols/pos/QXPosDisplay.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/pos/POSKeyboard.h"

#include <utility>

namespace qx {

namespace {

constexpr Integer kOrdinaryFontSize = 8;
constexpr Integer kCurrentFontSize = 10;

bool IsKeyIndex(Integer nIndex) {
    return nIndex >= QXPosDisplay::kMinKey && nIndex <= QXPosDisplay::kMaxKey;
}

void SetTexts(PosButton& button, Integer nFontSize, bool fBold, std::string sCaption,
              std::string sToolTip) {
    button.FontSize = nFontSize;
    button.FontBold = fBold;
    button.Caption = std::move(sCaption);
    button.ToolTip = std::move(sToolTip);
}

} // namespace

QXPosDisplay::QXPosDisplay() {
    Trace("QXPosDisplay.UserControl_Initialize");
    for (Integer key = POSKeyboard::kSlots + 1; key <= kMaxKey; ++key)
        cmdPOS[static_cast<std::size_t>(key)].Visible = false;
}

QXPosDisplay::~QXPosDisplay() {
    Trace("QXPosDisplay.UserControl_Terminate");
}

template <typename Change>
void QXPosDisplay::ChangeKey(Integer nIndex, Change change) {
    if (!IsKeyIndex(nIndex))
        return;
    PosButton& button = cmdPOS[static_cast<std::size_t>(nIndex)];
    button.Visible = true;
    change(button);
    if (!m_painting)
        Refreshed.Raise();
}

void QXPosDisplay::SetKeyCaption(Integer nIndex, std::string sCaption, std::string sToolTip) {
    Trace("QXPosDisplay.SetKeyCaption");
    ChangeKey(nIndex, [&](PosButton& button) {
        SetTexts(button, kOrdinaryFontSize, false, std::move(sCaption), std::move(sToolTip));
    });
}

void QXPosDisplay::SetAsUnused(Integer nIndex, Long lColor) {
    Trace("QXPosDisplay.SetAsUnused");
    ChangeKey(nIndex, [&](PosButton& button) {
        SetTexts(button, kOrdinaryFontSize, false, {}, {});
        button.BackColor = lColor;
    });
}

void QXPosDisplay::SetAsCurrentCaption(Integer nIndex, std::string sCaption, std::string sToolTip) {
    Trace("QXPosDisplay.SetAsCurrentCaption");
    ChangeKey(nIndex, [&](PosButton& button) {
        SetTexts(button, kCurrentFontSize, true, std::move(sCaption), std::move(sToolTip));
    });
    MoveFocus(nIndex);
}

void QXPosDisplay::SetKeyColor(Integer nIndex, Long lColor) {
    Trace("QXPosDisplay.SetKeyColor");
    ChangeKey(nIndex, [&](PosButton& button) { button.BackColor = lColor; });
}

void QXPosDisplay::SetCursor(Integer nIndex) {
    Trace("QXPosDisplay.SetCursor");
    ChangeKey(nIndex, [](PosButton&) {});
    MoveFocus(nIndex);
}

void QXPosDisplay::MoveFocus(Integer nIndex) {
    if (!IsKeyIndex(nIndex) || m_painting)
        return;
    m_focus = nIndex;
    FocusMoved.Raise();
}

bool QXPosDisplay::IsUsedKey(Integer nIndex) const {
    Trace("QXPosDisplay.IsUsedKey");
    return IsKeyIndex(nIndex) && !Trim(cmdPOS[static_cast<std::size_t>(nIndex)].Caption).empty();
}

void QXPosDisplay::PaintTogether(const std::function<void()>& paint) {
    const bool inside = std::exchange(m_painting, true);
    try {
        paint();
    } catch (...) {
        m_painting = inside;
        throw;
    }
    m_painting = inside;
    if (!m_painting)
        Refreshed.Raise();
}

void QXPosDisplay::cmdPOS_Click(Integer Index) {
    if (!IsKeyIndex(Index))
        return;
    SetCursor(Index);
    KeyClicked.Raise(Index);
}

} // namespace qx
