#include "cli/Errors.h"

#include "host/ErrorText.h"

namespace qx::cli {

namespace {

host::Json OrNull(std::string_view text) {
    return text.empty() ? host::Json() : host::Json(text);
}

template <typename Value>
host::Json OrNull(const std::optional<Value>& value) {
    return value ? host::Json(*value) : host::Json();
}

} // namespace

host::Error UsageError(const std::string& text) {
    return host::Error(host::Cause::WrongUsage, {.reason = text});
}

std::string HintOf(host::Suggestion suggestion, const std::string& name) {
    using host::Suggestion;
    switch (suggestion) {
    case Suggestion::Recover:
        return "; see qxconf recover";
    case Suggestion::RestoreBackup:
        return " (qxconf backup restore)";
    case Suggestion::Repair:
        return " (--repair replaces what is damaged)";
    case Suggestion::SkipAbsent:
        return " (--skip-absent leaves such sections out)";
    case Suggestion::GiveVariables:
        return "; values are given by --set " + name + "=VALUE";
    case Suggestion::ChooseModel:
        return "; with --model NAME one is made there";
    case Suggestion::LeaveOutKeyboard:
        return " (--keyboard and --model choose a simulated keyboard)";
    case Suggestion::LeaveOutIdentifier:
        return " (qxconf upload --no-identifier)";
    case Suggestion::None:
    case Suggestion::ReadAgain:
    case Suggestion::TryLater:
    case Suggestion::ChooseDriver:
    case Suggestion::MoveFileAway:
        break;
    }
    return {};
}

std::string MessageOf(const host::Error& error) {
    return host::TextOf(error) + HintOf(error.suggestion, error.name);
}

host::Json ToJson(const host::Error& error) {
    const auto& faults = error.faults;
    const std::string pointer =
        error.place.pointer.empty() && !faults.empty() ? faults.front().place : error.place.pointer;
    host::Json json = {{"code", host::CodeOf(error.Kind())}, {"message", MessageOf(error)}};
    json["place"] = pointer.empty() && faults.empty() ? host::Json() : host::Json(pointer);
    json["file"] = OrNull(error.place.file);
    json["section"] = OrNull(error.place.section);
    json["address"] = OrNull(error.place.address);
    json["function"] = OrNull(error.call ? error.call->function : "");
    json["status"] = OrNull(error.Status());
    json["holds"] = OrNull(error.holds ? host::CodeOf(*error.holds) : "");
    json["backup"] = OrNull(error.backup);
    json["suggestion"] = OrNull(host::CodeOf(error.suggestion));
    for (const host::Fault& fault : faults)
        json["faults"].push_back(ToJson(fault));
    return json;
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
