#include "batch/Batch.h"
#include "batch/Keyboard.h"
#include "files/SystemTexts.h"
#include "host/ErrorText.h"

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
            return Unplugged("there is no " + files::TextOf(choice.keyboard));
        setup::OpenedDriver driver = m_services.openDriver(choice);
        try {
            return std::make_unique<Keyboard>(std::move(driver), m_services);
        } catch (const host::Error& error) {
            if (error.Kind() == host::ErrorKind::KeyboardNotOpened)
                return Unplugged(host::TextOf(error));
            NoteOnce(host::TextOf(error));
            return nullptr;
        }
    }
    std::unique_ptr<Keyboard> Unplugged(const std::string& reason) {
        m_handled.reset();
        const Unit* unit = Next("");
        NoteOnce("waiting for " + (unit != nullptr ? unit->name : "a keyboard") + " (" + reason +
                 ")");
        return nullptr;
    }
    // Notes a text once, not repeatedly while nothing changes.
    void NoteOnce(const std::string& text) {
        if (std::exchange(m_noted, text) != text)
            m_services.note(text);
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
            m_services.note("this keyboard is " + done->name + ", which is done");
        else if (unit == nullptr)
            m_services.note("this keyboard is not one of the remaining units");
        else
            m_batch.Program(*unit, [&](UnitReport& report) { keyboard.Program(*unit, report); });
        m_handled = keyboard.Identifier(); // the document may have changed it
        const Unit* next = Next("");
        if (!m_batch.IsAllDone())
            m_services.note(
                "next: unplug this keyboard, and plug in " +
                (next != nullptr ? "the one for " + next->name : "one of the remaining units"));
        m_noted.clear();
    }

    Batch& m_batch;
    const Services& m_services;
    std::optional<std::string> m_handled; // the identifier of the keyboard that has been handled
    std::string m_noted;
};

void Batch::RunAtBench() {
    m_report.Save();
    Bench(*this).Run();
}

} // namespace qx::batch
