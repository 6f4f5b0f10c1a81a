#include "qxcontrols/platform/Platform.h"

namespace qx {

namespace {

struct Defaults {
    TickCounter tickCounter;
    PendingMessages pendingMessages;
    MessageBoxes messageBoxes;
    WaitPointer waitPointer;
    GuidCreator guidCreator;
    FormTimers formTimers;
    ModalForms modalForms;
};

Defaults& TheDefaults() {
    static Defaults defaults; // stateless, so all hosts can share them
    return defaults;
}

} // namespace

Platform::Platform()
    : tickCounter(&TheDefaults().tickCounter), pendingMessages(&TheDefaults().pendingMessages),
      messageBoxes(&TheDefaults().messageBoxes), waitPointer(&TheDefaults().waitPointer),
      guidCreator(&TheDefaults().guidCreator), formTimers(&TheDefaults().formTimers),
      modalForms(&TheDefaults().modalForms) {}

} // namespace qx
