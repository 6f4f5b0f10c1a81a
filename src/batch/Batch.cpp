#include "batch/Batch.h"

#include "batch/Keyboard.h"

#include <algorithm>

namespace qx::batch {

namespace {

std::unique_ptr<files::FileLock> Locked(const std::filesystem::path& report,
                                        const std::filesystem::path& job) {
    std::unique_ptr<files::FileLock> lock;
    try {
        lock = std::make_unique<files::FileLock>(report);
    } catch (const std::exception& error) {
        throw host::Error(host::ErrorKind::FileFailed, error.what());
    }
    if (!lock->TryLock())
        throw host::Error(host::ErrorKind::FileFailed,
                          "another batch is at work on " + job.string());
    return lock;
}

std::string Bytes(Long count) {
    return std::to_string(count) + (count == 1 ? " byte" : " bytes");
}

} // namespace

Batch::Batch(Job job, Services services)
    : m_job(std::move(job)), m_services(std::move(services)),
      m_lock(Locked(Report::PathFor(m_job.File()), m_job.File())),
      m_report(Report::Load(Report::PathFor(m_job.File()), m_job.File().filename().string())) {
    std::vector<UnitReport> units;
    for (const Unit& unit : m_job.Units()) {
        const UnitReport* known = m_report.Find(unit.name);
        units.push_back(known != nullptr ? *known : UnitReport());
        units.back().name = unit.name;
        if (units.back().wanted != unit.wanted)
            units.back().result = Result::NotDone;
    }
    m_report.units = std::move(units);
}

bool Batch::IsAllDone() const {
    return m_report.Count(Result::Done) == m_report.units.size();
}

UnitReport& Batch::ReportOf(const Unit& unit) {
    return m_report.units[static_cast<std::size_t>(&unit - m_job.Units().data())];
}

void Batch::Program(const Unit& unit, const std::function<void(UnitReport&)>& program) {
    UnitReport report;
    report.name = unit.name;
    report.time = host::TimeText(m_services.now());
    report.document = unit.document->Name();
    report.wanted = unit.wanted;
    std::string outcome;
    const auto fail = [&](host::ErrorKind kind, const std::string& message) {
        report.result = Result::Failed;
        report.code = host::CodeOf(kind);
        report.message = message;
        outcome = "failed: " + message;
        m_firstFailure = m_firstFailure.value_or(kind);
    };
    try {
        program(report);
        report.result = Result::Done;
        outcome = report.bytesSent == 0
                      ? "done: it held all of it already"
                      : "done: wrote " + Bytes(report.bytesSent) + ", read back and found equal";
    } catch (const host::Error& error) {
        fail(error.Kind(), error.what());
    } catch (const std::exception& error) {
        fail(host::ErrorKind::TransferFailed, error.what());
    }
    const std::size_t number = static_cast<std::size_t>(&unit - m_job.Units().data()) + 1;
    m_services.note("[" + std::to_string(number) + " of " + std::to_string(m_job.Units().size()) +
                    "] " + unit.name + ": " + outcome);
    ReportOf(unit) = std::move(report);
    m_report.Save();
}

void Batch::Run() {
    m_report.Save(); // before a keyboard is touched it is known that this works
    for (const Unit& unit : m_job.Units()) {
        if (m_services.isInterrupted())
            return;
        if (ReportOf(unit).result != Result::Done)
            Program(unit, [&](UnitReport& report) {
                Keyboard(m_services.openDriver(*unit.target), m_services).Program(unit, report);
            });
    }
}

// What goes on at the bench: which keyboard is plugged in, and whether it has had its turn.
class Batch::Bench {
public:
    explicit Bench(Batch& batch) : m_batch(batch), m_services(batch.m_services) {}

    void Run() {
        while (!m_batch.IsAllDone() && !m_services.isInterrupted()) {
            Attend();
            if (!m_batch.IsAllDone() && !m_services.isInterrupted())
                m_services.pause();
        }
    }

private:
    void Attend() {
        const auto keyboard = Look();
        if (keyboard && !HasHadItsTurn(*keyboard))
            TakeOn(*keyboard);
    }
    // The keyboard at the bench; null when there is none that answers. Only one that cannot be
    // opened is gone: one that fails later may be the same with a bad contact.
    [[nodiscard]] std::unique_ptr<Keyboard> Look() {
        const setup::KeyboardChoice& choice = *m_batch.m_job.Bench();
        std::error_code ignored;
        if (!choice.keyboard.empty() && !std::filesystem::exists(choice.keyboard, ignored))
            return Unplugged("there is no " + choice.keyboard.string());
        setup::OpenedDriver driver = m_services.openDriver(choice);
        try {
            return std::make_unique<Keyboard>(std::move(driver), m_services);
        } catch (const host::Error& error) {
            if (error.Kind() == host::ErrorKind::KeyboardNotOpened)
                return Unplugged(error.what());
            SayOnce(error.what());
            return nullptr;
        }
    }
    std::unique_ptr<Keyboard> Unplugged(const std::string& reason) {
        m_handled.reset();
        const Unit* unit = Next("");
        SayOnce("waiting for " + (unit != nullptr ? unit->name : "a keyboard") + " (" + reason +
                ")");
        return nullptr;
    }
    // Not again and again while nothing changes.
    void SayOnce(const std::string& text) {
        if (std::exchange(m_said, text) != text)
            m_services.note(text);
    }

    // A keyboard without an identifier has to be unplugged to be told from the next.
    [[nodiscard]] bool HasHadItsTurn(const Keyboard& keyboard) const {
        return m_handled && (m_handled->empty() || *m_handled == keyboard.Identifier());
    }

    // The unit that this keyboard is for: the one that names it, else the first that names none.
    [[nodiscard]] const Unit* Next(const std::string& identifier) const {
        const Unit* next = nullptr;
        for (const Unit& unit : m_batch.m_job.Units()) {
            if (m_batch.ReportOf(unit).result == Result::Done)
                continue;
            if (!identifier.empty() && unit.identifier == identifier)
                return &unit;
            if (unit.identifier.empty() && next == nullptr)
                next = &unit;
        }
        return next;
    }
    // The unit as which this keyboard is done already, as far as it can be told.
    [[nodiscard]] const Unit* DoneAs(const std::string& identifier) const {
        for (const Unit& unit : m_batch.m_job.Units()) {
            const UnitReport& report = m_batch.ReportOf(unit);
            if (report.result == Result::Done && !unit.setsIdentifier && !identifier.empty() &&
                report.identifier == identifier)
                return &unit;
        }
        return nullptr;
    }

    void TakeOn(Keyboard& keyboard) {
        const std::string identifier = keyboard.Identifier();
        const Unit* done = DoneAs(identifier);
        const Unit* unit = Next(identifier);
        if (done != nullptr)
            m_services.note("this keyboard is " + done->name + ", which is done");
        else if (unit == nullptr)
            m_services.note("this keyboard is none of those that are left");
        else
            m_batch.Program(*unit, [&](UnitReport& report) { keyboard.Program(*unit, report); });
        m_handled = keyboard.Identifier(); // which the document may have changed
        const Unit* next = Next("");
        if (!m_batch.IsAllDone())
            m_services.note(
                "next: unplug this keyboard, and plug in " +
                (next != nullptr ? "the one for " + next->name : "one of those that are left"));
        m_said.clear();
    }

    Batch& m_batch;
    const Services& m_services;
    std::optional<std::string> m_handled; // the identifier of the keyboard that has had its turn
    std::string m_said;
};

void Batch::RunAtBench() {
    m_report.Save();
    Bench(*this).Run();
}

} // namespace qx::batch
