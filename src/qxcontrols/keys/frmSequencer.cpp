#include "qxcontrols/keys/frmSequencer.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keys/KeySequence.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXSequencer.h"
#include "qxcontrols/keys/SequenceText.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

constexpr int kScanInterval = 100; // milliseconds

bool IsKeyPressed(Long lCode) {
    return lCode != 0 && lCode != -1 && lCode != -2;
}

Integer ToInteger(Long lCode) {
    if (!std::in_range<Integer>(lCode))
        throw std::invalid_argument("key code " + std::to_string(lCode) + " exceeds 16 bits");
    return static_cast<Integer>(lCode);
}

// The sequence as editable text; empty if a code cannot be named.
std::string EditableText(const KeySequence& sequence, const QXKeyboardLayoutData* layout) {
    const auto bytes = sequence.Bytes();
    return layout != nullptr && bytes ? SequenceToText(*bytes, *layout) : std::string();
}

} // namespace

frmSequencer::frmSequencer(const Platform& platform)
    : m_tmrSequencer(platform.formTimers->Create()) {
    layoutDisplay.SetDisplayKeyType(DISPLAY_PROG);
    m_keyClicked = layoutDisplay.OnKeyClicked.Subscribe(
        [this](Long lPositionCode) { layoutDisplay_OnKeyClicked(lPositionCode); });
    m_tmrSequencer->SetInterval(kScanInterval);
    m_tmrSequencer->SetHandler([this] { tmrSequencer_Timer(); });
    lblSizeMsg.Visible = false;
    lblTypedFault.Visible = false;
    Form_Load();
}

void frmSequencer::TraceForm(std::string_view sProcedure) {
    Trace("[frmSequencer]." + std::string(sProcedure));
}

void frmSequencer::SetLayoutSource(QXKeyboardLayoutData* layout) {
    m_layout = layout;
    layoutDisplay.SetLayoutSource(layout);
}

void frmSequencer::SetPrefSource(const QXProgSettings* preferences) {
    layoutDisplay.SetPrefSource(preferences);
}

void frmSequencer::SetKeyString(const std::string& sKeyString) {
    m_sequence.SetKeyString(sKeyString);
    m_caret.reset();
    m_held.clear();
    m_openedWith = sKeyString;
    ForgetTyped();
    m_ok = false;
}

bool frmSequencer::IsChanged() const {
    return m_sequence.KeyString() != m_openedWith || HasTyped();
}

void frmSequencer::PrepareDisplay() {
    TraceForm("PrepareDisplay");
    if (m_parent != nullptr)
        ShowTexts(*m_parent);
    lblSizeMsg.Visible = false;
    layoutDisplay.ReloadKeysSettings(KeyboardSequences());
    DisplayCurrentSeq();
}

void frmSequencer::Translate(QXSequencer& parent) {
    TraceForm("Translate");
    ShowTexts(parent);
    Refreshed.Raise();
}

void frmSequencer::ShowTexts(QXSequencer& parent) {
    parent.ButtonOK().ShowOn(cmdOK);
    parent.ButtonCancel().ShowOn(cmdCancel);
    parent.ButtonCleanLast().ShowOn(cmdClean[0]);
    parent.ButtonCleanAll().ShowOn(cmdClean[1]);
    lblCaption.Caption = parent.EditorCaption();
    lblSequence.Caption = parent.SequenceCaption();
    lblSizeMsg.Caption = parent.SequenceSizeMessage();
    chkShowDetails.Caption = parent.ShowDetails();
}

void frmSequencer::DisplayCurrentSeq() {
    ShowSequence();
    Refreshed.Raise();
}

void frmSequencer::ShowSequence() {
    TraceForm("DisplayCurrentSeq");
    txtSequence.Text = m_layout == nullptr ? m_sequence.KeyString()
                                           : m_layout->ConvertKeyStringIntoTextStringUseUpcodes(
                                                 m_sequence.KeyString(), chkShowDetails.Value == 1);
    lblRemaining.Caption = std::to_string(std::max(0, m_maxSeqSize - m_sequence.Length()));
    txtTyped.Enabled = m_layout != nullptr;
    const bool isPending = HasTyped();
    m_typedAsIs = EditableText(m_sequence, m_layout);
    if (!isPending)
        txtTyped.Text = m_typedAsIs;
}

void frmSequencer::ForgetTyped() {
    txtTyped.Text = m_typedAsIs;
    ShowTypedFault({});
}

void frmSequencer::ShowTypedFault(const std::string& sFault) {
    m_typedTooMany = 0;
    lblTypedFault.Caption = sFault;
    lblTypedFault.Visible = !sFault.empty();
}

bool frmSequencer::TakeTyped() {
    if (m_layout == nullptr || !HasTyped())
        return true;
    KeySequence typed;
    try {
        for (const Byte code : ParseSequenceText(txtTyped.Text, *m_layout)) {
            if (code == 0)
                throw std::invalid_argument("code 0 would end the sequence in the keyboard");
            typed.AddByte(code);
        }
    } catch (const std::exception& error) {
        ShowTypedFault(error.what());
        lblSizeMsg.Visible = false;
        return false;
    }
    lblSizeMsg.Visible = false;
    if (typed.Length() > m_maxSeqSize) {
        ShowTypedFault("the text has " + std::to_string(typed.Length()) + " codes, only " +
                       std::to_string(m_maxSeqSize) + " fit");
        m_typedTooMany = typed.Length();
        return false;
    }
    ShowTypedFault({});
    m_sequence.SetKeyString(typed.KeyString());
    m_caret.reset();
    ForgetTyped();
    ShowSequence();
    return true;
}

bool frmSequencer::ApplyTyped() {
    TraceForm("ApplyTyped");
    const bool isTaken = TakeTyped();
    Refreshed.Raise();
    return isTaken;
}

void frmSequencer::txtTyped_Change() {
    if (!lblTypedFault.Visible)
        return;
    ShowTypedFault({});
    Refreshed.Raise();
}

void frmSequencer::txtTyped_GotFocus() {
    m_typing = true;
    RunScan();
    if (m_keyboard != nullptr)
        m_keyboard->DisablePositionProgMode();
}

void frmSequencer::txtTyped_LostFocus() {
    m_typing = false;
    if (m_keyboard != nullptr)
        m_keyboard->EnablePositionProgMode();
    RunScan();
}

void frmSequencer::RunScan() {
    m_tmrSequencer->SetEnabled(m_scanning && !m_inBackground && !m_typing);
}

void frmSequencer::layoutDisplay_OnKeyClicked(Long lPositionCode) {
    std::vector<Long> codes(m_held.begin(), m_held.end());
    std::erase(codes, lPositionCode);
    codes.push_back(lPositionCode);
    for (std::size_t pressed = codes.size(); pressed > 0; --pressed)
        codes.push_back(codes[pressed - 1] + kRelease);
    const bool isChord = !std::exchange(m_held, {}).empty();
    if (isChord && TakeTyped() && !HasRoomFor(codes.size()))
        return ShowSizeMsg();
    for (const Long code : codes)
        if (m_pressesTwin && pressTwinKey)
            pressTwinKey(code);
        else
            AddCode(code);
}

void frmSequencer::AddCode(Long lCode) {
    TraceForm("AddCode");
    if (!TakeTyped()) {
        Refreshed.Raise();
        return;
    }
    if (m_sequence.Length() >= m_maxSeqSize) {
        ShowSizeMsg();
        return;
    }
    try { // the keyboard may report any value
        PutIn(ToInteger(lCode));
    } catch (const std::invalid_argument& error) {
        TraceForm(std::string("AddCode: ") + error.what());
    }
    ShowSequence();
    HideSizeMsg(); // also refreshes the sequence
}

void frmSequencer::RemoveLastCode() {
    TraceForm("RemoveLastCode");
    if (!TakeTyped()) {
        Refreshed.Raise();
        return;
    }
    std::string codes = m_sequence.KeyString();
    codes.resize(codes.size() - std::min<std::size_t>(codes.size(), KeySequence::kFieldWidth));
    m_sequence.SetKeyString(std::move(codes));
    lblSizeMsg.Visible = false;
    m_caret.reset();
    DisplayCurrentSeq();
}

void frmSequencer::RemoveAllCodes() {
    TraceForm("RemoveAllCodes");
    m_sequence.SetKeyString("");
    m_caret.reset();
    ForgetTyped();
    lblSizeMsg.Visible = false;
    DisplayCurrentSeq();
}

void frmSequencer::ShowSizeMsg() {
    TraceForm("ShowSizeMsg");
    lblSizeMsg.Visible = true;
    Refreshed.Raise();
}

void frmSequencer::HideSizeMsg() {
    TraceForm("HideSizeMsg");
    lblSizeMsg.Visible = false;
    Refreshed.Raise();
}

void frmSequencer::LeaveWithOK() {
    TraceForm("LeaveWithOK");
    if (!TakeTyped()) {
        Refreshed.Raise();
        return;
    }
    m_ok = true;
    Closed.Raise();
}

void frmSequencer::LeaveWithCancel() {
    TraceForm("LeaveWithCancel");
    m_ok = false;
    Closed.Raise();
}

void frmSequencer::editor_StartKeyScan() {
    TraceForm("editor_StartKeyScan");
    m_scanning = true;
    m_inBackground = false; // a host may deactivate the form while closing it
    m_typing = false;
    m_tmrSequencer->SetEnabled(true);
}

void frmSequencer::editor_StopKeyScan() {
    TraceForm("editor_StopKeyScan");
    m_scanning = false;
    m_tmrSequencer->SetEnabled(false);
}

void frmSequencer::tmrSequencer_Timer() {
    TraceForm("tmrSequencer_Timer");
    m_tmrSequencer->SetEnabled(false); // no tick during a slow call of the device
    if (m_keyboard == nullptr)
        return;
    const Long code = m_keyboard->GetPositionCodeKey();
    if (IsKeyPressed(code)) {
        Trace("Position-Code " + Hex(code));
        AddCode(code);
    }
    RunScan();
}

void frmSequencer::Form_Load() {
    TraceForm("Form_Load");
    editor_StopKeyScan();
    SetLayoutSource(nullptr);
    SetPrefSource(nullptr);
    SetKeyboard(nullptr);
    SetParentSequencer(nullptr);
}

void frmSequencer::Form_Activate() {
    TraceForm("Form_Activate");
    m_inBackground = false;
    RunScan(); // resumes a scan that deactivation interrupted
}

void frmSequencer::Form_Deactivate() {
    TraceForm("Form_Deactivate");
    m_tmrSequencer->SetEnabled(false);
    m_inBackground = true;
}

void frmSequencer::Form_Unload() {
    TraceForm("Form_Unload");
    editor_StopKeyScan();
}

void frmSequencer::AppActivate() {
    TraceForm("AppActivate");
    if (m_keyboard != nullptr && !m_typing)
        m_keyboard->EnablePositionProgMode();
}

void frmSequencer::AppDeactivate() {
    TraceForm("AppDeactivate");
    if (m_keyboard != nullptr)
        m_keyboard->DisablePositionProgMode();
}

void frmSequencer::cmdClean_Click(Integer Index) {
    if (Index == 0)
        RemoveLastCode();
    else
        RemoveAllCodes();
}

void frmSequencer::imgHelp_Click() {
    if (m_parent != nullptr)
        m_parent->RaiseHelp();
}

} // namespace qx
