// Platform: what the controls need of the machine and of their host, one small interface a service.
//
// A host hands its own services to the controls that it creates, and keeps them alive as long as
// these. What it leaves out works by the plain defaults.
#pragma once

#include "qxcontrols/platform/FormTimer.h"
#include "qxcontrols/platform/GuidCreator.h"
#include "qxcontrols/platform/MessageBoxes.h"
#include "qxcontrols/platform/ModalForms.h"
#include "qxcontrols/platform/PendingMessages.h"
#include "qxcontrols/platform/TickCounter.h"
#include "qxcontrols/platform/WaitPointer.h"

namespace qx {

struct Platform {
    TickCounter* tickCounter;
    PendingMessages* pendingMessages;
    MessageBoxes* messageBoxes;
    WaitPointer* waitPointer;
    GuidCreator* guidCreator;
    FormTimers* formTimers;
    ModalForms* modalForms;

    Platform(); // the defaults
};

} // namespace qx
