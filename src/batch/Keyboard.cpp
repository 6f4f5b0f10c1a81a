#include "batch/Keyboard.h"

#include "files/Sha256.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"

#include <algorithm>

namespace qx::batch {

namespace {

std::string IdentifierText(std::string_view bytes) {
    return bytes.size() == kGuidSize ? ToText(GuidFromBytes(bytes)) : "";
}

// The unit's connection in the job, on one line.
std::string PlaceOf(const Unit& unit) {
    std::string place = unit.targetText;
    std::replace(place.begin(), place.end(), '\n', ' ');
    return place;
}

} // namespace

Keyboard::Keyboard(setup::OpenedDriver driver, const Services& services)
    : m_services(services), m_driver(std::move(driver)),
      m_session(*m_driver.driver, services.platform,
                setup::SessionOptions(m_driver, services.progress)) {
    m_session.Open();
    m_identifier = ReadIdentifier();
}

std::string Keyboard::ReadIdentifier() {
    host::KeyboardContent content;
    QXKeyboardAccess& access = m_session.Access();
    if (access.HasItem(MODULE_GUID))
        content.pieces.push_back({MODULE_GUID, "", access.GetBaseAddressForModule(MODULE_GUID),
                                  std::string(kGuidSize, '\0')});
    return content.pieces.empty() ? ""
                                  : IdentifierText(m_session.ReadPlaces(content).identity.guid);
}

void Keyboard::RollBack(host::Writer& writer, const Unit& unit, UnitReport& report) {
    for (auto writes = writer.Interrupted(); !writes.empty(); writes = writer.Interrupted()) {
        const host::JournalEntry& write = writes.front();
        (void)writer.Recover(write, host::Writer::Way::RollBack);
        report.isRolledBack = true;
        m_services.warn(unit.name,
                        host::Error(host::Cause::WriteRolledBack, {.writes = {write.Name()}}));
    }
}

void Keyboard::Program(const Unit& unit, UnitReport& report) {
    report.keyboard = m_session.ReadIdentity().Name();
    report.identifier = m_identifier;
    if (!unit.identifier.empty() && unit.identifier != m_identifier)
        throw host::Error(
            host::Cause::NotTheUnit,
            {.name = m_identifier, .other = unit.identifier, .holds = host::Holds::NotTouched});
    QXKeyboardLayoutData& layout = m_services.layout(m_driver.layout ? m_driver.layout() : "");
    const auto newConfiguration = [&] {
        return std::make_unique<host::Configuration>(m_services.platform, &layout, nullptr);
    };
    host::Writer::Options writing =
        setup::WriterOptions(m_driver, m_services.records, newConfiguration);
    writing.now = m_services.now;
    writing.till = {unit.name, PlaceOf(unit)};
    host::Writer writer(m_session, std::move(writing));
    RollBack(writer, unit, report);
    try {
        WriteDocument(writer, newConfiguration(), unit, report);
    } catch (host::Error& error) {
        // Nothing of this document was sent, but an interrupted write has been rolled back.
        if (report.isRolledBack && error.holds == host::Holds::NotTouched)
            error.holds = host::Holds::Old;
        throw;
    }
    m_session.Close();
}

void Keyboard::WriteDocument(host::Writer& writer,
                             std::unique_ptr<host::Configuration> configuration, const Unit& unit,
                             UnitReport& report) {
    host::Variables variables(unit.variables);
    const auto wanted =
        m_session.Read(*configuration, *unit.document, variables, m_services.skipAbsent);
    const host::WritePlan plan = writer.Plan(wanted.sections, {.repair = m_services.repair});
    if (plan.GivesIdentifier())
        m_services.warn(unit.name, unit.document->IdentifierWarning(plan.ReplacesIdentifier()));
    host::Writer::Request request;
    request.document = unit.document->Name();
    request.documentSha256 = files::Sha256(unit.document->ToText());
    const host::Writer::Outcome outcome = writer.Write(plan, request);
    report.bytesSent = outcome.bytesSent;
    report.backup = outcome.backup;
    report.identifier = m_identifier = IdentifierText(plan.after.identity.guid);
}

} // namespace qx::batch
