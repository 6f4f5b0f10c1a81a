// The editors' forms as windows: the face of each, and what its window reports to it.
//
// Texts that the editors do not provide are in English.
#pragma once

#include "com/faces/Faces.h"

#include <functional>
#include <string>

namespace qx {
class frmPOSProgrammer;
class frmSequencer;
} // namespace qx

namespace qx::com {

struct FormTable {
    FaceTable face;
    std::function<std::string()> title;
    std::function<Subscription(std::function<void()>)> onClosed; // the user has left it
    std::function<bool()> isChanged;                             // leaving it would lose something
    std::function<void()> accept;                                // like the OK button
    std::function<void()> cancel;
    std::function<void()> undo;                    // may be empty
    std::function<void(bool)> activate;            // the window; may be empty
    std::function<void(bool)> activateApplication; // may be empty
    std::function<void()> unload;                  // its window has gone; may be empty
};

// The form outlives its table.
[[nodiscard]] FormTable FormTableOf(frmSequencer& form);
[[nodiscard]] FormTable FormTableOf(frmPOSProgrammer& form);

} // namespace qx::com
