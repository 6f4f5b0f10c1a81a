#include "host/Error.h"

namespace qx::host {

std::string_view CodeOf(ErrorKind kind) {
    switch (kind) {
    case ErrorKind::Usage:
        return "usage";
    case ErrorKind::KeyboardNotOpened:
        return "keyboard-not-opened";
    case ErrorKind::TransferFailed:
        return "transfer-failed";
    case ErrorKind::FileFailed:
        return "file-failed";
    case ErrorKind::ReadBackDiffers:
        return "read-back-differs";
    case ErrorKind::KeyboardChanged:
        return "keyboard-changed";
    case ErrorKind::KeyboardDamaged:
        return "keyboard-damaged";
    case ErrorKind::KeyboardBusy:
        return "keyboard-busy";
    case ErrorKind::Stopped:
        return "stopped";
    case ErrorKind::WriteInterrupted:
        return "write-interrupted";
    case ErrorKind::DocumentInvalid:
        return "document-invalid";
    case ErrorKind::LayoutInvalid:
        return "layout-invalid";
    case ErrorKind::ModelInvalid:
        return "model-invalid";
    }
    return "";
}

Error Error::With(const std::string& addition) const {
    const std::string message = what() + addition;
    return m_status ? Error(m_kind, message, *m_status) : Error(m_kind, message, m_faults);
}

} // namespace qx::host
