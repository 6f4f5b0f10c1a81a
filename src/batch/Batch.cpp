#include "batch/Batch.h"

#include "batch/Crew.h"
#include "batch/Keyboard.h"
#include "files/SystemTexts.h"

#include <algorithm>

namespace qx::batch {

namespace {

std::unique_ptr<files::FileLock> Locked(const std::filesystem::path& report,
                                        const std::filesystem::path& job) {
    std::unique_ptr<files::FileLock> lock;
    try {
        lock = std::make_unique<files::FileLock>(report);
    } catch (const std::exception& error) {
        throw host::FileError(error);
    }
    if (!lock->TryLock())
        throw host::Error(host::Cause::JobBusy, {.place = {.file = files::TextOf(job)}});
    return lock;
}

} // namespace

Batch::Batch(Job job, Services services)
    : m_job(std::move(job)), m_services(std::move(services)),
      m_lock(Locked(Report::PathFor(m_job.File()), m_job.File())),
      m_report(
          Report::Load(Report::PathFor(m_job.File()), files::TextOf(m_job.File().filename()))) {
    std::vector<std::string> names;
    for (const Unit& unit : m_job.Units())
        names.push_back(unit.name);
    m_report.SetUnits(names);
    for (const Unit& unit : m_job.Units()) {
        UnitReport& report = ReportOf(unit);
        if (report.wanted != unit.wanted)
            report.result = Result::NotDone;
        m_chosen.insert(&unit);
    }
}

void Batch::Choose(const std::vector<std::string>& names) {
    m_chosen.clear();
    for (const std::string& name : names) {
        const auto& units = m_job.Units();
        const auto unit = std::find_if(units.begin(), units.end(),
                                       [&](const Unit& each) { return each.name == name; });
        if (unit == units.end())
            throw host::Error(host::Cause::NoSuchUnit,
                              {.name = name, .place = {.file = files::TextOf(m_job.File())}});
        m_chosen.insert(&*unit);
    }
}

std::vector<const Unit*> Batch::Left() const {
    std::vector<const Unit*> left;
    for (const Unit& unit : m_job.Units())
        if (m_chosen.contains(&unit) && ReportOf(unit).result != Result::Done)
            left.push_back(&unit);
    return left;
}

std::size_t Batch::NumberOf(const Unit& unit) const {
    return static_cast<std::size_t>(&unit - m_job.Units().data());
}

UnitReport& Batch::ReportOf(const Unit& unit) {
    return m_report.units[NumberOf(unit)];
}

const UnitReport& Batch::ReportOf(const Unit& unit) const {
    return m_report.units[NumberOf(unit)];
}

void Batch::Note(const Unit& unit, const Attempt& attempt) {
    for (const host::Error& warning : attempt.warnings)
        m_services.warn(unit.name, warning);
    m_services.finished(attempt.report, NumberOf(unit) + 1, m_job.Units().size());
    ReportOf(unit) = attempt.report;
    m_attempts[NumberOf(unit)] = attempt;
    m_report.Save();
}

std::optional<host::ErrorKind> Batch::FirstFailure() const {
    for (const auto& [number, attempt] : m_attempts)
        if (attempt.report.error)
            return attempt.report.error->Kind();
    return std::nullopt;
}

ThisRun Batch::ThisRunSoFar() const {
    ThisRun run;
    for (const auto& [number, attempt] : m_attempts) {
        (attempt.report.error ? run.failed : run.done).push_back(attempt.report.name);
        run.bytesSent += attempt.report.bytesSent;
    }
    return run;
}

void Batch::Program(const Unit& unit, const std::function<void(UnitReport&)>& program) {
    Note(unit, MakeAttempt(unit, m_services.now(), program));
}

void Batch::Run() {
    m_report.Save(); // verifies, before a keyboard is touched, that it can be saved
    for (const Unit* unit : Left()) {
        if (m_services.isInterrupted())
            return;
        Program(*unit, [&](UnitReport& report) {
            Keyboard(m_services.openDriver(*unit->target), m_services).Program(*unit, report);
        });
    }
}

void Batch::RunByCrew(std::size_t workers, const std::filesystem::path& program,
                      const WorkerSettings& settings) {
    m_report.Save();
    const auto left = Left();
    Crew(std::min(workers, left.size()), program, settings)
        .Run(left, m_services.isInterrupted,
             [this](const Unit& unit, const Attempt& attempt) { Note(unit, attempt); });
}

} // namespace qx::batch
