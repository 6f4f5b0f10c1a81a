#include "batch/Attempt.h"

#include "host/ErrorText.h"

namespace qx::batch {

std::string Attempt::Outcome() const {
    if (failure)
        return "failed: " + report.message;
    if (report.bytesSent == 0)
        return "done: it held all of it already";
    return "done: wrote " + std::to_string(report.bytesSent) +
           (report.bytesSent == 1 ? " byte" : " bytes") + ", read back and found equal";
}

void Attempt::Fail(const host::Error& error) {
    failure = error.Kind();
    report.result = Result::Failed;
    report.code = host::CodeOf(error.Kind());
    report.message = host::TextOf(error);
    report.suggestion = error.suggestion;
}

Attempt NewAttempt(const Unit& unit, host::Time now) {
    Attempt attempt;
    attempt.report.name = unit.name;
    attempt.report.time = host::TimeText(now);
    attempt.report.document = unit.document->Name();
    attempt.report.wanted = unit.wanted;
    return attempt;
}

Attempt MakeAttempt(const Unit& unit, host::Time now,
                    const std::function<void(UnitReport&)>& program) {
    Attempt attempt = NewAttempt(unit, now);
    try {
        program(attempt.report);
        attempt.report.result = Result::Done;
    } catch (const host::Error& error) {
        attempt.Fail(error);
    } catch (const std::exception& error) {
        attempt.Fail(host::Error(host::Cause::Unforeseen, {.reason = error.what()}));
    }
    return attempt;
}

} // namespace qx::batch
