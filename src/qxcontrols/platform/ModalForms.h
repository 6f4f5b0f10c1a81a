// The host's screen, for controls that need to show a form.
#pragma once

namespace qx {

class frmPOSProgrammer;
class frmSequencer;

class ModalForms {
public:
    virtual ~ModalForms() = default;

    // Show the form and return when it has been closed (its event Closed). The defaults, for hosts
    // without a screen, return at once, as if the user had cancelled.
    virtual void ShowModal(frmSequencer& /*form*/) {}
    virtual void ShowModal(frmPOSProgrammer& /*form*/) {}
};

} // namespace qx
