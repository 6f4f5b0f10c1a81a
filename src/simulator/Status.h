// The statuses that the simulated keyboard's driver gives. The numbers stay as they are: scripts
// and records of errors carry them.
#pragma once

#include "qxcontrols/common/Types.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace qx::sim {

enum class Status : Long {
    Ok = 0,
    NotOpen = 1,          // QXCFG_Init has not succeeded
    KeyboardInUse = 2,    // another program uses the keyboard
    KeyboardInvalid = 3,  // not a keyboard file, or damaged
    FileFailed = 4,       // a file could not be read or written
    FileInvalid = 5,      // a file is not of the expected kind, or damaged
    OutsideMemory = 6,    // an address or a size reaches out of the memory
    NoSuchEntry = 7,      // the directory has no such entry
    TransferStopped = 8,  // the transfer broke off half-way
    NoArgument = 9,       // a buffer or a file name is missing
    NotPositionMode = 10, // the keyboard is not in position-programming mode
    NoSuchLayer = 11,     // the keyboard has no such layer
    ModelInvalid = 12,    // there is no such model, or it is invalid
    Busy = 13,            // called during a call, from a progress message
};

// What the status means, in a few words; the empty text for one that this driver does not give.
[[nodiscard]] std::string_view StatusText(Long lStatus);

// A call that cannot be done: its status, and the reason in words.
class Failure : public std::runtime_error {
public:
    Failure(Status status, const std::string& reason)
        : std::runtime_error(reason), m_status(status) {}
    [[nodiscard]] Status Why() const { return m_status; }

private:
    Status m_status;
};

} // namespace qx::sim
