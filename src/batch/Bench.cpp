#include "batch/Batch.h"
#include "batch/Keyboard.h"
#include "files/SystemTexts.h"

#include <optional>
#include <utility>

namespace qx::batch {

// The state of the bench: the connected keyboard, and whether it has been handled.
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
    using News = BenchNews::Kind;

    void Attend() {
        const auto keyboard = Look();
        if (keyboard && !HasHadItsTurn(*keyboard))
            TakeOn(*keyboard);
    }
    // The keyboard at the bench; null if none answers. Only a keyboard that cannot be opened counts
    // as unplugged: one that fails later may be the same with a bad contact.
    [[nodiscard]] std::unique_ptr<Keyboard> Look() {
        const setup::KeyboardChoice& choice = *m_batch.m_job.Bench();
        std::error_code ignored;
        if (!choice.keyboard.empty() && !std::filesystem::exists(choice.keyboard, ignored))
            return Unplugged(host::Error(host::Cause::KeyboardFileMissing,
                                         {.place = {.file = files::TextOf(choice.keyboard)}}));
        setup::OpenedDriver driver = m_services.openDriver(choice);
        try {
            return std::make_unique<Keyboard>(std::move(driver), m_services);
        } catch (const host::Error& error) {
            if (error.Kind() == host::ErrorKind::KeyboardNotOpened)
                return Unplugged(error);
            ReportOnce({.kind = News::Fails, .why = error});
            return nullptr;
        }
    }
    std::unique_ptr<Keyboard> Unplugged(const host::Error& why) {
        m_handled.reset();
        ReportOnce({News::Waits, Next(""), why});
        return nullptr;
    }
    // Once, not repeatedly while nothing changes.
    void ReportOnce(const BenchNews& news) {
        if (m_reported != news)
            m_services.atBench(news);
        m_reported = news;
    }

    // Keyboards without an identifier are only distinguished by being unplugged in between.
    [[nodiscard]] bool HasHadItsTurn(const Keyboard& keyboard) const {
        return m_handled && (m_handled->empty() || *m_handled == keyboard.Identifier());
    }

    // The unit for this keyboard: the one that names it, or else the first that names none.
    [[nodiscard]] const Unit* Next(const std::string& identifier) const {
        const Unit* next = nullptr;
        for (const Unit* unit : m_batch.Left()) {
            if (!identifier.empty() && unit->identifier == identifier)
                return unit;
            if (unit->identifier.empty() && next == nullptr)
                next = unit;
        }
        return next;
    }
    // The unit for which this keyboard is already done, as far as can be determined.
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
            m_services.atBench({News::IsDone, done});
        else if (unit == nullptr)
            m_services.atBench({News::IsUnknown});
        else
            m_batch.Program(*unit, [&](UnitReport& report) { keyboard.Program(*unit, report); });
        m_handled = keyboard.Identifier(); // the document may have changed it
        if (!m_batch.IsAllDone())
            m_services.atBench({News::ExpectsNext, Next("")});
        m_reported.reset();
    }

    Batch& m_batch;
    const Services& m_services;
    std::optional<std::string> m_handled; // the identifier of the keyboard that has been handled
    std::optional<BenchNews> m_reported;
};

void Batch::RunAtBench() {
    m_report.Save();
    Bench(*this).Run();
}

} // namespace qx::batch
