#include "cli/Errors.h"

#include "host/ErrorText.h"

namespace qx::cli {

namespace {

std::string HintOf(const host::Error& error) {
    using host::Suggestion;
    switch (error.suggestion) {
    case Suggestion::Recover:
        return "; see qxconf recover";
    case Suggestion::NameWrite:
        return "; choose the one to discard: qxconf recover --forget ID";
    case Suggestion::RestoreBackup:
        return " (qxconf backup restore)";
    case Suggestion::Repair:
        return " (--repair replaces what is damaged)";
    case Suggestion::SkipAbsent:
        return " (--skip-absent leaves such sections out)";
    case Suggestion::GiveVariables:
        return "; values are given by --set " + (error.name.empty() ? "NAME" : error.name) +
               "=VALUE";
    case Suggestion::ChooseModel:
        return "; --model NAME creates one there";
    case Suggestion::LeaveOutKeyboard:
        return " (--keyboard and --model choose a simulated keyboard)";
    case Suggestion::LeaveOutIdentifier:
        return "; keyboards keep their own when a document leaves the identifier out (qxconf "
               "upload --no-identifier)";
    case Suggestion::MoveFileAway:
        return error.Why() == host::Cause::ReportDamaged
                   ? ": if you move it away, all keyboards are programmed again"
                   : ": check the keyboard's contents, move that file to another folder, and try "
                     "again";
    case Suggestion::None:
    case Suggestion::ReadAgain:
    case Suggestion::TryLater:
    case Suggestion::ChooseDriver:
        break;
    }
    return {};
}

} // namespace

host::Error UsageError(const std::string& text) {
    return host::Error(host::Cause::WrongUsage, {.reason = text});
}

std::string MessageOf(const host::Error& error) {
    return host::TextOf(error) + HintOf(error);
}

int ExitStatusOf(host::ErrorKind kind) {
    switch (kind) {
    case host::ErrorKind::Usage:
        return 2;
    case host::ErrorKind::KeyboardNotOpened:
        return 3;
    case host::ErrorKind::TransferFailed:
    case host::ErrorKind::FileFailed:
    case host::ErrorKind::KeyboardChanged:
    case host::ErrorKind::KeyboardDamaged:
    case host::ErrorKind::KeyboardBusy:
    case host::ErrorKind::Stopped:
    case host::ErrorKind::WriteInterrupted:
        return 4;
    case host::ErrorKind::ReadBackDiffers:
        return 5;
    case host::ErrorKind::DocumentInvalid:
    case host::ErrorKind::LayoutInvalid:
    case host::ErrorKind::ModelInvalid:
        return 6;
    }
    return 2;
}

} // namespace qx::cli
