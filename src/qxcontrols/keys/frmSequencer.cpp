#include "qxcontrols/keys/frmSequencer.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/device/Trace.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/QXSequencer.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

constexpr int kScanInterval = 100; // milliseconds
constexpr Long kRelease = 128;     // added to a key's code when it goes up

bool IsKeyPressed(Long lCode) {
    return lCode != 0 && lCode != -1 && lCode != -2;
}

Integer ToInteger(Long lCode) {
    if (!std::in_range<Integer>(lCode))
        throw std::invalid_argument("key code " + std::to_string(lCode) + " does not fit 16 bits");
    return static_cast<Integer>(lCode);
}

} // namespace

frmSequencer::frmSequencer(const Platform& platform)
    : m_tmrSequencer(platform.formTimers->Create()) {
    layoutDisplay.SetDisplayKeyType(DISPLAY_PROG);
    m_keyClicked = layoutDisplay.OnKeyClicked.Subscribe([this](Long lPositionCode) {
        AddCode(lPositionCode);
        AddCode(lPositionCode + kRelease);
    });
    m_tmrSequencer->SetInterval(kScanInterval);
    m_tmrSequencer->SetHandler([this] { tmrSequencer_Timer(); });
    lblSizeMsg.Visible = false;
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
    m_ok = false;
}

void frmSequencer::PrepareDisplay() {
    TraceForm("PrepareDisplay");
    ShowTexts();
    lblSizeMsg.Visible = false;
    layoutDisplay.ReloadKeysSettings(KeyboardSequences());
    DisplayCurrentSeq();
}

void frmSequencer::ShowTexts() {
    if (m_parent == nullptr)
        return;
    m_parent->ButtonOK().ShowOn(cmdOK);
    m_parent->ButtonCancel().ShowOn(cmdCancel);
    m_parent->ButtonCleanLast().ShowOn(cmdClean[0]);
    m_parent->ButtonCleanAll().ShowOn(cmdClean[1]);
    lblCaption.Caption = m_parent->EditorCaption();
    lblSequence.Caption = m_parent->SequenceCaption();
    lblSizeMsg.Caption = m_parent->SequenceSizeMessage();
    chkShowDetails.Caption = m_parent->ShowDetails();
}

void frmSequencer::DisplayCurrentSeq() {
    TraceForm("DisplayCurrentSeq");
    ShowSequence();
    Refreshed.Raise();
}

void frmSequencer::ShowSequence() {
    txtSequence.Text = m_layout == nullptr ? m_sequence.KeyString()
                                           : m_layout->ConvertKeyStringIntoTextStringUseUpcodes(
                                                 m_sequence.KeyString(), chkShowDetails.Value == 1);
    lblRemaining.Caption = std::to_string(std::max(0, m_maxSeqSize - m_sequence.Length()));
}

void frmSequencer::AddCode(Long lCode) {
    TraceForm("AddCode");
    if (m_sequence.Length() >= m_maxSeqSize) {
        ShowSizeMsg();
        return;
    }
    try { // a keyboard may report anything
        m_sequence.AddByte(ToInteger(lCode));
    } catch (const std::invalid_argument& error) {
        TraceForm(std::string("AddCode: ") + error.what());
    }
    lblSizeMsg.Visible = false;
    DisplayCurrentSeq();
}

void frmSequencer::RemoveLastCode() {
    TraceForm("RemoveLastCode");
    std::string codes = m_sequence.KeyString();
    codes.resize(codes.size() - std::min<std::size_t>(codes.size(), KeySequence::kFieldWidth));
    m_sequence.SetKeyString(std::move(codes));
    DisplayCurrentSeq();
}

void frmSequencer::RemoveAllCodes() {
    TraceForm("RemoveAllCodes");
    m_sequence.SetKeyString("");
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
    m_inBackground = false; // a host may deactivate the form as it closes it
    m_tmrSequencer->SetEnabled(true);
}

void frmSequencer::editor_StopKeyScan() {
    TraceForm("editor_StopKeyScan");
    m_scanning = false;
    m_tmrSequencer->SetEnabled(false);
}

void frmSequencer::tmrSequencer_Timer() {
    TraceForm("tmrSequencer_Timer");
    m_tmrSequencer->SetEnabled(false); // no tick meets a slow call of the device
    if (m_keyboard == nullptr)
        return;
    const Long code = m_keyboard->GetPositionCodeKey();
    if (IsKeyPressed(code)) {
        Trace("Position-Code " + Hex(code));
        AddCode(code);
    }
    m_tmrSequencer->SetEnabled(m_scanning && !m_inBackground);
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
    m_active = true;
    m_inBackground = false;
    m_tmrSequencer->SetEnabled(m_scanning); // a scan that the deactivation interrupted goes on
}

void frmSequencer::Form_Deactivate() {
    TraceForm("Form_Deactivate");
    m_tmrSequencer->SetEnabled(false);
    m_active = false;
    m_inBackground = true;
}

void frmSequencer::Form_Unload() {
    TraceForm("Form_Unload");
    editor_StopKeyScan();
}

void frmSequencer::AppActivate() {
    TraceForm("AppActivate");
    if (m_keyboard != nullptr)
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
