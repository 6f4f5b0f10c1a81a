// Platform: the services that the controls need from the system and their host, with one small
// interface each.
//
// A host replaces the services that it provides itself and keeps the defaults for the others:
//
//     struct Boxes : qx::MessageBoxes { void Show(std::string_view sText) override; };
//     Boxes boxes;
//     qx::Platform platform; // the defaults
//     platform.messageBoxes = &boxes;
//     qx::QXBarcode barcode(platform);
//
// A control copies the pointers, none of which may be null; the services must outlive the control.
// They are called on the thread that calls the control, in the middle of its work.
// PendingMessages, MessageBoxes and ModalForms may run a message loop, through which the host can
// call the same control again; the others must not.
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
    TickCounter* tickCounter;         // default: the steady clock
    PendingMessages* pendingMessages; // default: sleeps for a millisecond
    MessageBoxes* messageBoxes;       // default: shows nothing
    WaitPointer* waitPointer;         // default: shows nothing
    GuidCreator* guidCreator;         // default: random identifiers
    FormTimers* formTimers;           // default: a timer ticks only when the host calls Tick
    ModalForms* modalForms;           // default: every form is cancelled at once

    Platform(); // the defaults
};

} // namespace qx
