#include "qxcontrols/keys/QXSequencer.h"

#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/device/Trace.h"

#include <exception>

namespace qx {

namespace {

void TraceError() {
    Trace("ERROR: in QXSequencer.ShowSequenceEditor !!!!!!!!");
}

} // namespace

// The form while it is edited in: ends by stopping the scan, letting go of the shared objects and
// leaving position-programming mode.
class QXSequencer::Editing {
public:
    Editing(frmSequencer& form, QXKeyboardAccess& keyboard) : m_form(form), m_keyboard(keyboard) {}
    ~Editing() {
        m_form.editor_StopKeyScan();
        m_form.SetLayoutSource(nullptr);
        m_form.SetPrefSource(nullptr);
        m_form.SetKeyboard(nullptr);
        m_form.SetParentSequencer(nullptr);
        m_keyboard.DisablePositionProgMode();
    }
    Editing(const Editing&) = delete;
    Editing& operator=(const Editing&) = delete;

private:
    frmSequencer& m_form;
    QXKeyboardAccess& m_keyboard;
};

QXSequencer::QXSequencer(const Platform& platform) : m_platform(platform), m_form(platform) {
    Trace("QXSequencer.UserControl_Initialize");
}

QXSequencer::~QXSequencer() {
    Trace("QXSequencer.UserControl_Terminate");
}

bool QXSequencer::ShowSequenceEditor(Integer nPosCode, const std::string& sCurrSeq,
                                     std::string& sNewSeq, Integer nMaxLength) {
    Trace("QXSequencer.ShowSequenceEditor");
    if (m_keyboard == nullptr) {
        TraceError();
        return false;
    }
    m_form.SetLayoutSource(m_layout);
    m_form.SetPrefSource(m_preferences);
    m_form.SetKeyboard(m_keyboard);
    m_form.SetParentSequencer(this);
    if (!m_keyboard->EnablePositionProgMode()) {
        Trace("UNABLE TO ENABLE POSITION PROG MODE");
        return false;
    }
    const Editing editing(m_form, *m_keyboard);
    if (!Prepare(nPosCode, sCurrSeq, nMaxLength))
        return false;
    m_form.editor_StartKeyScan();
    m_platform.modalForms->ShowModal(m_form);
    if (!m_form.OK())
        return false;
    sNewSeq = m_form.KeyString();
    return true;
}

bool QXSequencer::Prepare(Integer nPosCode, const std::string& sCurrSeq, Integer nMaxLength) {
    try {
        m_form.SetKeyString(sCurrSeq);
        m_form.SetMaxSeqSize(nMaxLength);
        m_form.SetCurrProgKey(nPosCode);
        m_form.chkShowDetails.Value = m_doShowDetails ? 1 : 0;
        m_form.PrepareDisplay();
        return true;
    } catch (const std::exception&) {
        TraceError();
        return false;
    }
}

void QXSequencer::RaiseHelp() {
    Trace("QXSequencer.RaiseHelp");
    UserNeedsHelp.Raise();
}

void QXSequencer::Translate() {
    Trace("QXSequencer.Translate");
    m_form.SetParentSequencer(this);
    m_form.PrepareDisplay();
}

void QXSequencer::ReloadKeySettings() {
    Trace("QXSequencer.ReloadKeySettings");
    m_form.SetPrefSource(m_preferences);
    m_form.layoutDisplay.ReloadKeysSettings(KeyboardSequences());
}

void QXSequencer::SetKeyFontSize(Integer nNewSize) {
    Trace("QXSequencer.SetKeyFontSize");
    m_form.layoutDisplay.SetUserFontSize(nNewSize);
}

} // namespace qx
