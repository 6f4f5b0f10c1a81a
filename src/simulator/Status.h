// The statuses that the simulated keyboard's driver returns. The numbers must not change: scripts
// and error logs contain them.
#pragma once

#include "files/Problem.h"
#include "qxcontrols/common/Types.h"
#include "json/Fault.h"

#include <string_view>
#include <utility>
#include <vector>

namespace qx::sim {

enum class Status : Long {
    Ok = 0,
    NotOpen = 1,          // QXCFG_Init has not succeeded
    KeyboardInUse = 2,    // another program uses the keyboard
    KeyboardInvalid = 3,  // not a keyboard file, or damaged
    FileFailed = 4,       // a file could not be read or written
    FileInvalid = 5,      // a file is not of the expected kind, or damaged
    OutsideMemory = 6,    // an address or a size exceeds the memory
    NoSuchEntry = 7,      // the directory has no such entry
    TransferStopped = 8,  // the transfer stopped half-way
    NoArgument = 9,       // a buffer or a file name is missing
    NotPositionMode = 10, // the keyboard is not in position-programming mode
    NoSuchLayer = 11,     // the keyboard has no such layer
    ModelInvalid = 12,    // no such model, or it is invalid
    Busy = 13,            // called during a call, from a progress message
};

// A short explanation of the status; empty for one that this driver does not return.
[[nodiscard]] std::string_view StatusText(Long lStatus);

// A call that cannot be carried out: its status, the reason, and the faults of a file's contents.
class Failure : public files::ProblemError {
public:
    Failure(Status status, files::Problem reason, std::vector<json::Fault> faults = {})
        : ProblemError(std::move(reason)), m_status(status), m_faults(std::move(faults)) {}
    [[nodiscard]] Status Why() const { return m_status; }
    [[nodiscard]] const std::vector<json::Fault>& Faults() const { return m_faults; }

private:
    Status m_status;
    std::vector<json::Fault> m_faults;
};

} // namespace qx::sim
