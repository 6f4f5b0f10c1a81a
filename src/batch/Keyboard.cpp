#include "batch/Keyboard.h"

#include "files/Sha256.h"
#include "qxcontrols/platform/GuidCreator.h"

#include <algorithm>

namespace qx::batch {

namespace {

constexpr std::size_t kGuidSize = 16;

// Little-endian numbers, then bytes, as the keyboard stores it.
std::string IdentifierText(const std::string& bytes) {
    if (bytes.size() != kGuidSize)
        return {};
    const auto number = [&](std::size_t at, std::size_t size) {
        std::uint32_t value = 0;
        for (std::size_t i = size; i > 0; --i)
            value = value << 8U | static_cast<Byte>(bytes[at + i - 1]);
        return value;
    };
    Guid guid;
    guid.first = number(0, 4);
    guid.second = static_cast<std::uint16_t>(number(4, 2));
    guid.third = static_cast<std::uint16_t>(number(6, 2));
    for (std::size_t i = 0; i < guid.rest.size(); ++i)
        guid.rest[i] = static_cast<Byte>(bytes[8 + i]);
    return ToText(guid);
}

// The unit's connection in the job, on one line.
std::string PlaceOf(const Unit& unit) {
    std::string place = unit.targetText;
    std::replace(place.begin(), place.end(), '\n', ' ');
    return place;
}

host::Session::Options SessionOptions(const setup::OpenedDriver& driver, const Services& services) {
    host::Session::Options options;
    options.statusText = driver.statusText;
    options.failure = driver.failure;
    options.progress = services.progress;
    return options;
}

} // namespace

Keyboard::Keyboard(setup::OpenedDriver driver, const Services& services)
    : m_services(services), m_driver(std::move(driver)),
      m_session(*m_driver.driver, services.platform, SessionOptions(m_driver, services)) {
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
    host::Writer writer(m_session, {m_services.records,
                                    newConfiguration,
                                    m_services.now,
                                    m_driver.origin,
                                    {unit.name, PlaceOf(unit)}});
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
    const auto present =
        m_session.SectionsIn(*configuration, m_services.skipAbsent, unit.document.get());
    host::Variables variables(unit.variables);
    auto sections = configuration->Read(*unit.document, variables);
    const auto absent = host::TakeOutAbsent(sections, present);
    if (!absent.empty() && !m_services.skipAbsent)
        throw host::AbsentError(unit.document->Name(), absent);
    const host::WritePlan plan = writer.Plan(sections, {.repair = m_services.repair});
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
