#include "batch/Attempt.h"

namespace qx::batch {

void Attempt::Fail(const host::Error& error) {
    report.result = Result::Failed;
    report.error = error;
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
        attempt.Fail(host::Error(host::Cause::Unforeseen, {.problem = files::ProblemOf(error)}));
    }
    return attempt;
}

} // namespace qx::batch
