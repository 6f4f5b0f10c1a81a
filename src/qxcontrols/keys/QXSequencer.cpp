#include "qxcontrols/keys/QXSequencer.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <exception>

namespace qx {

namespace {

void TraceError() {
    Trace("ERROR: in QXSequencer.ShowSequenceEditor !!!!!!!!");
}

} // namespace

// The form with the shared objects. The destructor stops the scan, releases the objects and leaves
// position-programming mode if it was entered.
class QXSequencer::Editing {
public:
    explicit Editing(QXSequencer& sequencer) : m_sequencer(sequencer), m_form(sequencer.m_form) {
        m_form.SetLayoutSource(sequencer.m_layout);
        m_form.SetPrefSource(sequencer.m_preferences);
        m_form.SetKeyboard(sequencer.m_keyboard);
        m_form.SetParentSequencer(&sequencer);
        sequencer.m_isOpen = true;
    }
    ~Editing() {
        m_sequencer.m_isOpen = false;
        m_form.editor_StopKeyScan();
        m_form.SetLayoutSource(nullptr);
        m_form.SetPrefSource(nullptr);
        m_form.SetKeyboard(nullptr);
        m_form.SetParentSequencer(nullptr);
        if (m_keyboard != nullptr)
            m_keyboard->DisablePositionProgMode();
    }
    Editing(const Editing&) = delete;
    Editing& operator=(const Editing&) = delete;

    bool EnterPositionMode(QXKeyboardAccess& keyboard) {
        if (!keyboard.EnablePositionProgMode())
            return false;
        m_keyboard = &keyboard;
        return true;
    }

private:
    QXSequencer& m_sequencer;
    frmSequencer& m_form;
    QXKeyboardAccess* m_keyboard = nullptr; // set while in position-programming mode
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
    if (m_isOpen || m_keyboard == nullptr) {
        TraceError();
        return false;
    }
    Editing editing(*this);
    if (!editing.EnterPositionMode(*m_keyboard)) {
        Trace("UNABLE TO ENABLE POSITION PROG MODE");
        return false;
    }
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
    m_form.Translate(*this);
}

void QXSequencer::ReloadKeySettings() {
    Trace("QXSequencer.ReloadKeySettings");
    if (!m_isOpen) // it reads the colours when it opens
        return;
    m_form.SetPrefSource(m_preferences);
    m_form.layoutDisplay.ReloadKeysSettings(KeyboardSequences());
}

void QXSequencer::SetKeyFontSize(Integer nNewSize) {
    Trace("QXSequencer.SetKeyFontSize");
    m_form.layoutDisplay.SetUserFontSize(nNewSize);
}

} // namespace qx
