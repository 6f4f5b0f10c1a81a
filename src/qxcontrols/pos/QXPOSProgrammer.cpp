#include "qxcontrols/pos/QXPOSProgrammer.h"

#include "qxcontrols/common/Trace.h"

namespace qx {

// The form while it is open; the destructor releases the shared objects.
class QXPOSProgrammer::Editing {
public:
    explicit Editing(QXPOSProgrammer& programmer)
        : m_programmer(programmer), m_form(programmer.m_form) {
        m_form.SetLayoutSource(programmer.m_layout);
        m_form.SetPrefSource(programmer.m_preferences);
        m_form.SetParentProgrammer(&programmer);
        programmer.m_isOpen = true;
    }
    ~Editing() {
        m_programmer.m_isOpen = false;
        m_form.SetLayoutSource(nullptr);
        m_form.SetPrefSource(nullptr);
        m_form.SetParentProgrammer(nullptr);
    }
    Editing(const Editing&) = delete;
    Editing& operator=(const Editing&) = delete;

private:
    QXPOSProgrammer& m_programmer;
    frmPOSProgrammer& m_form;
};

QXPOSProgrammer::QXPOSProgrammer(const Platform& platform) : m_platform(platform) {
    Trace("QXPOSProgrammer.UserControl_Initialize");
}

QXPOSProgrammer::~QXPOSProgrammer() {
    Trace("QXPOSProgrammer.UserControl_Terminate");
}

bool QXPOSProgrammer::ShowPosProgrammer(POSKeyboard& oPosData) {
    Trace("QXPOSProgrammer.ShowPosProgrammer");
    if (m_isOpen) {
        Trace("ERROR: in QXPOSProgrammer.ShowPosProgrammer !!!!!!!!");
        return false;
    }
    const Editing editing(*this);
    m_form.SetPosData(oPosData);
    m_form.PrepareDisplay();
    m_platform.modalForms->ShowModal(m_form);
    if (!m_form.OK())
        return false;
    oPosData.CopyContent(&m_form.PosData());
    return true;
}

void QXPOSProgrammer::Translate() {
    Trace("QXPOSProgrammer.Translate");
    m_form.SetParentProgrammer(this);
    m_form.PrepareDisplay();
}

void QXPOSProgrammer::ReloadColor() {
    Trace("QXPOSProgrammer.ReloadColor");
    m_form.SetPrefSource(m_preferences);
    m_form.PrepareDisplay();
}

} // namespace qx
