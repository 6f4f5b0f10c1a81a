// The statuses that the simulated keyboard's driver gives.
#pragma once

#include "qxcontrols/common/Types.h"

#include <string_view>

namespace qx::sim {

enum class Status : Long {
    Ok = 0,
    NotOpen = 1,          // QXCFG_Init has not succeeded
    KeyboardInUse = 2,    // another program uses the keyboard
    KeyboardInvalid = 3,  // the keyboard's file is none, or damaged
    FileFailed = 4,       // a file could not be read or written
    FileInvalid = 5,      // a file is not of the expected kind, or damaged
    OutsideMemory = 6,    // an address or a size reaches out of the memory
    NoSuchEntry = 7,      // the directory has no such entry
    TransferStopped = 8,  // the transfer broke off half-way
    NoFileName = 9,       // a file name is missing
    NotPositionMode = 10, // the keyboard is not in position-programming mode
    NoSuchLayer = 11,     // layers are 0 to 9
    Requested = 12,       // a fault that was asked for
};

// What the status means, in a few words; the empty text for one that this driver does not give.
[[nodiscard]] std::string_view StatusText(Long lStatus);

} // namespace qx::sim
