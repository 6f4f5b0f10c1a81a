// Batch: works through a job, one keyboard after the other, and reports.
//
// A keyboard that fails stops nothing. What is done is in the report before the next keyboard is
// touched, so a batch can break off anywhere: the next one does what is left.
#pragma once

#include "batch/Job.h"
#include "batch/Report.h"
#include "batch/Services.h"
#include "files/Files.h"

#include <memory>
#include <optional>

namespace qx::batch {

class Batch {
public:
    // The job has been checked. Throws host::Error(FileFailed) when its report cannot be used, or
    // another batch is at work on the job.
    Batch(Job job, Services services);

    // What the report says of each unit, and "not done" of what has changed since.
    [[nodiscard]] const Report& Progress() const { return m_report; }
    [[nodiscard]] bool IsAllDone() const;
    // Why the first of the units that failed in this run has failed.
    [[nodiscard]] std::optional<host::ErrorKind> FirstFailure() const { return m_firstFailure; }

    // Programs every unit that is not done. Throws host::Error only when there can be no report.
    void Run();

    // The same at the job's bench, where one keyboard after the other is plugged in. Ends when all
    // units are done, or when it is interrupted. Throws host::Error when the bench's driver cannot
    // be used, or there can be no report.
    void RunAtBench();

private:
    class Bench;

    [[nodiscard]] UnitReport& ReportOf(const Unit& unit);
    // Programs by `program`; notes the result, and saves it in the report.
    void Program(const Unit& unit, const std::function<void(UnitReport&)>& program);

    Job m_job;
    Services m_services;
    std::unique_ptr<files::FileLock> m_lock;
    Report m_report;
    std::optional<host::ErrorKind> m_firstFailure;
};

} // namespace qx::batch
