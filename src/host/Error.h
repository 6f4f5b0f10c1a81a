// Error: what went wrong, for people and for programs.
#pragma once

#include "host/VisibleText.h"
#include "qxcontrols/common/Types.h"
#include "json/Fault.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

using json::Fault;
using json::FaultKind;

enum class ErrorKind {
    Usage,             // an argument names something that does not exist
    KeyboardNotOpened, // no driver, no keyboard, or its start-up failed
    TransferFailed,    // a driver call of a transfer, a mode or a file operation failed
    FileFailed,        // a file could not be read or written
    ReadBackDiffers,   // the keyboard does not hold what was written
    KeyboardChanged,   // the keyboard is not, or does not hold, what a write was planned for
    KeyboardDamaged,   // a block of the keyboard cannot be understood, and is not to be replaced
    KeyboardBusy,      // another program is writing to the keyboard
    Stopped,           // the user stopped it before anything was written
    WriteInterrupted,  // an earlier write to this keyboard is to be finished or rolled back first
    DocumentInvalid,   // a configuration document cannot be used
    LayoutInvalid,     // a keyboard layout cannot be used
    ModelInvalid,      // the model of a simulated keyboard cannot be used
};

// Its name for programs, "transfer-failed".
[[nodiscard]] std::string_view CodeOf(ErrorKind kind);

// The message is a VisibleText, whatever it was made of.
class Error : public std::runtime_error {
public:
    Error(ErrorKind kind, const std::string& message)
        : std::runtime_error(VisibleText(message)), m_kind(kind) {}

    // A failed driver call: the message ends with its name and status.
    Error(ErrorKind kind, const std::string& message, Long status)
        : std::runtime_error(VisibleText(message)), m_kind(kind), m_status(status) {}

    // A file with faults; the message names the file and the first fault.
    Error(ErrorKind kind, const std::string& message, std::vector<Fault> faults)
        : std::runtime_error(VisibleText(message)), m_kind(kind), m_faults(std::move(faults)) {}

    // The same with more behind its message.
    [[nodiscard]] Error With(const std::string& addition) const;

    [[nodiscard]] ErrorKind Kind() const { return m_kind; }
    [[nodiscard]] std::optional<Long> Status() const { return m_status; } // the driver's own
    [[nodiscard]] const std::vector<Fault>& Faults() const { return m_faults; }

private:
    ErrorKind m_kind;
    std::optional<Long> m_status;
    std::vector<Fault> m_faults;
};

} // namespace qx::host
