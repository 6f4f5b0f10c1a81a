// Batch: works through a job, and reports.
//
// A keyboard that fails stops nothing. The result of each keyboard is in the report before the next
// one begins, so a batch can break off anywhere: the next one does what is left.
#pragma once

#include "batch/Attempt.h"
#include "batch/Job.h"
#include "batch/Report.h"
#include "batch/Services.h"
#include "batch/Worker.h"
#include "files/Files.h"

#include <map>
#include <memory>
#include <optional>
#include <set>

namespace qx::batch {

// What one run has done.
struct ThisRun {
    std::vector<std::string> done;
    std::vector<std::string> failed;
    Long bytesSent = 0;
};

class Batch {
public:
    // The job has been checked. Throws host::Error(FileFailed) when its report cannot be used, or
    // another batch is at work on the job.
    Batch(Job job, Services services);

    // Limits the batch to the units of these names. Throws host::Error(Usage) for a name that no
    // unit has.
    void Choose(const std::vector<std::string>& names);

    // What the report says of each unit, and "not done" of what has changed since.
    [[nodiscard]] const Report& Progress() const { return m_report; }
    // The chosen units that are not done.
    [[nodiscard]] std::vector<const Unit*> Left() const;
    [[nodiscard]] bool IsAllDone() const { return Left().empty(); }
    [[nodiscard]] ThisRun ThisRunSoFar() const;
    // Why the first of the units that failed in this run, in the job's order, has failed.
    [[nodiscard]] std::optional<host::ErrorKind> FirstFailure() const;

    // Programs every chosen unit that is not done, one after the other. Throws host::Error only
    // when there can be no report.
    void Run();

    // The same by several processes at once, each of which runs `program`. Throws host::Error also
    // when none can be started.
    void RunByCrew(std::size_t workers, const std::filesystem::path& program,
                   const WorkerSettings& settings);

    // The same at the job's bench, where one keyboard after the other is plugged in. Ends when all
    // units are done, or when it is interrupted. Throws host::Error when the bench's driver cannot
    // be used, or there can be no report.
    void RunAtBench();

private:
    class Bench;

    [[nodiscard]] std::size_t NumberOf(const Unit& unit) const; // from 0
    [[nodiscard]] UnitReport& ReportOf(const Unit& unit);
    [[nodiscard]] const UnitReport& ReportOf(const Unit& unit) const;
    // Programs by `program`, and notes the result.
    void Program(const Unit& unit, const std::function<void(UnitReport&)>& program);
    // Tells the user of the attempt, and saves it in the report.
    void Note(const Unit& unit, const Attempt& attempt);

    Job m_job;
    Services m_services;
    std::unique_ptr<files::FileLock> m_lock;
    Report m_report;
    std::set<const Unit*> m_chosen;
    std::map<std::size_t, Attempt> m_attempts; // the last of each unit in this run
};

} // namespace qx::batch
