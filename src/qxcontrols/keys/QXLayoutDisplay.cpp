#include "qxcontrols/keys/QXLayoutDisplay.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/keys/KeyNames.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx {

namespace {

// Keys are drawn smaller than their rectangles, to leave gaps between neighbours.
constexpr Single kInset = 10;
constexpr Single kShrink = 25;

bool IsPositionCode(Long lID) {
    return lID >= KeyboardSequences::kMinKeyID && lID <= KeyboardSequences::kMaxKeyID;
}

std::string Described(const KeyButton& key) {
    return ", " + key.Caption + ", " + key.ToolTip;
}

} // namespace

QXLayoutDisplay::QXLayoutDisplay()
    : m_fontSize(static_cast<Integer>(InfoOf(Preference::KeyFontSize).loadDefault)) {
    Trace("QXLayoutDisplay.UserControl_Initialize");
    for (KeyButton& key : cmdKey)
        key.Visible = false; // until a layout is loaded
}

QXLayoutDisplay::~QXLayoutDisplay() {
    Trace("QXLayoutDisplay.UserControl_Terminate");
}

QXLayoutDisplay::Colors QXLayoutDisplay::CurrentColors() const {
    if (m_preferences == nullptr)
        return {255, 65280, 16711680, 2}; // red, green, blue, and the value of an unused key
    return {m_preferences->ColorProg(), m_preferences->ColorEmpty(), m_preferences->ColorCurr(),
            m_preferences->ColorUnused()};
}

bool QXLayoutDisplay::HasLayout() const {
    if (m_layout == nullptr)
        Trace("QXLayoutDisplay: no LayoutSource CRITICAL!!!!!");
    return m_layout != nullptr;
}

void QXLayoutDisplay::ReloadKeysSettings(const KeyboardSequences& KeyData) {
    Trace("QXLayoutDisplay.ReloadKeysSettings");
    if (!HasLayout())
        return;
    const Colors colors = CurrentColors();
    for (Long id = KeyboardSequences::kMinKeyID; id <= KeyboardSequences::kMaxKeyID; ++id)
        Redraw(id, KeyData, colors);
    Refreshed.Raise();
}

void QXLayoutDisplay::ReloadSettingsForKey(Long lID, const KeyboardSequences& KeyData) {
    Trace("QXLayoutDisplay.ReloadSettingsForKey");
    if (!IsPositionCode(lID) || !HasLayout())
        return;
    Redraw(lID, KeyData, CurrentColors());
    Refreshed.Raise();
}

void QXLayoutDisplay::Redraw(Long lID, const KeyboardSequences& keys, const Colors& colors) {
    KeyButton& key = cmdKey[static_cast<std::size_t>(lID)];
    key.Visible = m_layout->KeySupport(lID) != KEYMODE_NONE;
    key.Enabled = key.Visible && (m_type == DISPLAY_SETTING || lID < KeyNames::kFirstUnpressable);
    key.Programmed = keys.Key(lID).Length() > 0;
    key.BackColor = ColorOf(lID, keys, colors);
    key.Caption = m_layout->KeyCaption(lID);
    key.ToolTip = m_layout->KeyLongCaption(lID);
    key.Top = m_layout->KeyY(lID) + kInset;
    key.Left = m_layout->KeyX(lID) + kInset;
    key.Width = m_layout->KeyWidth(lID) - kShrink;
    key.Height = m_layout->KeyHeight(lID) - kShrink;
    if (m_type == DISPLAY_PROG && lID == m_currProgKey)
        Trace("QXLayoutDisplay:CURR KEY = " + std::to_string(lID) + Described(key));
}

Long QXLayoutDisplay::ColorOf(Long lID, const KeyboardSequences& keys, const Colors& colors) const {
    if (m_type == DISPLAY_PROG)
        return lID == m_currProgKey ? colors.current : colors.unused;
    if (m_layout->KeySupport(lID) != KEYMODE_PROG)
        return colors.unused;
    if (lID == m_currProgKey)
        return colors.current;
    return keys.Key(lID).Length() > 0 ? colors.programmed : colors.empty;
}

void QXLayoutDisplay::SelectKey(Integer nPositionCode) {
    Trace("QXLayoutDisplay.SelectKey");
    if (!IsPositionCode(nPositionCode))
        return;
    m_selectedKey = nPositionCode;
    KeySelected.Raise();
}

void QXLayoutDisplay::SetUserFontSize(Integer nNewSize) {
    Trace("QXLayoutDisplay.SetUserFontSize");
    m_fontSize = nNewSize;
    Refreshed.Raise();
}

void QXLayoutDisplay::cmdKey_Click(Integer Index) {
    if (!IsPositionCode(Index))
        return;
    Trace("QXLayoutDisplay.cmdKey_Click(" + std::to_string(Index) + ")" +
          Described(cmdKey[static_cast<std::size_t>(Index)]));
    OnKeyClicked.Raise(Index);
}

} // namespace qx
