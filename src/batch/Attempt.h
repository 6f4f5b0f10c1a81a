// Attempt: one try to program a unit, and its result.
#pragma once

#include "batch/Job.h"
#include "batch/Report.h"
#include "host/Error.h"
#include "host/RecordFiles.h"

#include <functional>
#include <vector>

namespace qx::batch {

struct Attempt {
    UnitReport report;
    std::vector<host::Error> warnings;

    void Fail(const host::Error& error);
};

// An attempt that has not begun.
[[nodiscard]] Attempt NewAttempt(const Unit& unit, host::Time now);

// Makes an attempt: `program` fills in the report, and throws on failure.
[[nodiscard]] Attempt MakeAttempt(const Unit& unit, host::Time now,
                                  const std::function<void(UnitReport&)>& program);

} // namespace qx::batch
