// The host's screen, as far as a control asks it to show a form.
#pragma once

namespace qx {

class frmSequencer;

class ModalForms {
public:
    virtual ~ModalForms() = default;

    // Shows the form and returns when it has been closed (frmSequencer::Closed). The default, for
    // hosts without a screen, returns at once, as if the user had cancelled.
    virtual void ShowModal(frmSequencer& /*form*/) {}
};

} // namespace qx
