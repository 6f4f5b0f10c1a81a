// Keyboard: one keyboard of a batch, from its start-up to its shut-down.
#pragma once

#include "batch/Job.h"
#include "batch/Report.h"
#include "batch/Services.h"
#include "host/Writer.h"

namespace qx::batch {

class Keyboard {
public:
    // Starts it up. Throws host::Error. The services must outlive this object.
    Keyboard(setup::OpenedDriver driver, const Services& services);
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    // "{...}"; empty for a keyboard without one.
    [[nodiscard]] const std::string& Identifier() const { return m_identifier; }

    // Writes the unit's settings to the keyboard, verifies them and closes the keyboard; an
    // interrupted write is rolled back first. Fills in the report along the way. Throws
    // host::Error.
    void Program(const Unit& unit, UnitReport& report);

private:
    [[nodiscard]] std::string ReadIdentifier();
    void RollBack(host::Writer& writer, const Unit& unit, UnitReport& report);
    void WriteDocument(host::Writer& writer, std::unique_ptr<host::Configuration> configuration,
                       const Unit& unit, UnitReport& report);

    const Services& m_services;
    setup::OpenedDriver m_driver;
    host::Session m_session;
    std::string m_identifier;
};

} // namespace qx::batch
