// Batch: programs the units of a job and reports the results.
//
// A failing keyboard does not stop the batch. Each keyboard's result is in the report before the
// next one begins, so a batch can be interrupted anywhere: the next run does the rest.
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

// The results of one run.
struct ThisRun {
    std::vector<std::string> done;
    std::vector<std::string> failed;
    Long bytesSent = 0;
};

class Batch {
public:
    // The job has been checked. Throws host::Error(FileFailed) if its report cannot be used, or if
    // another batch works on the job.
    Batch(Job job, Services services);

    // Limits the batch to the units with these names. Throws host::Error(Usage) for an unknown
    // name.
    void Choose(const std::vector<std::string>& names);

    // The report; units that have changed since count as "not done".
    [[nodiscard]] const Report& Progress() const { return m_report; }
    // The chosen units that are not done.
    [[nodiscard]] std::vector<const Unit*> Left() const;
    [[nodiscard]] bool IsAllDone() const { return Left().empty(); }
    [[nodiscard]] ThisRun ThisRunSoFar() const;
    // Why the first unit (in the job's order) that failed in this run has failed.
    [[nodiscard]] std::optional<host::ErrorKind> FirstFailure() const;

    // Programs all chosen units that are not done, one after the other. Throws host::Error only if
    // the report cannot be written.
    void Run();

    // The same with several processes in parallel, each running `program`. Also throws host::Error
    // if none can be started.
    void RunByCrew(std::size_t workers, const std::filesystem::path& program,
                   const WorkerSettings& settings);

    // The same at the job's bench, where keyboards are plugged in one after the other. Ends when
    // all units are done or when interrupted. Throws host::Error if the bench's driver cannot be
    // used or the report cannot be written.
    void RunAtBench();

private:
    class Bench;

    [[nodiscard]] std::size_t NumberOf(const Unit& unit) const; // from 0
    [[nodiscard]] UnitReport& ReportOf(const Unit& unit);
    [[nodiscard]] const UnitReport& ReportOf(const Unit& unit) const;
    // Programs the unit by calling `program`, and records the result.
    void Program(const Unit& unit, const std::function<void(UnitReport&)>& program);
    // Shows the attempt to the user, and saves it in the report.
    void Note(const Unit& unit, const Attempt& attempt);

    Job m_job;
    Services m_services;
    std::unique_ptr<files::FileLock> m_lock;
    Report m_report;
    std::set<const Unit*> m_chosen;
    std::map<std::size_t, Attempt> m_attempts; // the last one per unit in this run
};

} // namespace qx::batch
