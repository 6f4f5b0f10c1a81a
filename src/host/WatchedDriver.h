// WatchedDriver: a driver that observes what the controls themselves ignore.
//
// It records the first failed call with a meaningful status, the stretches of the image that have
// been written, and those that have been requested. It also blocks access to stretches that belong
// to no module: a control that uses the address -1 of a module missing in the keyboard gets success
// and zeros, and the driver is not called. It makes no calls of its own.
#pragma once

#include "host/Error.h"
#include "host/ForwardingDriver.h"
#include "host/Stretches.h"

#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::host {

// A stretch of the next transfer, with the module's id with which it was requested.
struct TransferRequest {
    KeyboardModuleIDs module;
    Long address;
    Long size;
};

class WatchedDriver : public ForwardingDriver {
public:
    explicit WatchedDriver(ConfigDriver& inner) : ForwardingDriver(inner) {}

    // Clears failures, writes and requests; the blocked stretches remain.
    void BeginOperation();

    // The first call since then that failed, among those with a meaningful status.
    [[nodiscard]] const std::optional<FailedCall>& Failure() const { return m_failure; }
    // The unreadable entries of the directory, which do not count as a failure.
    struct UnreadableEntries {
        int count = 0;
        Integer first = 0; // from 0
        Long status = 0;   // of the first
    };
    [[nodiscard]] const UnreadableEntries& Unreadable() const { return m_unreadable; }
    [[nodiscard]] const Stretches& Written();
    [[nodiscard]] const Stretches& Requested() const { return m_requested; }
    // The requested stretches, since the list was last cleared.
    [[nodiscard]] const std::vector<TransferRequest>& Requests() const { return m_requests; }

    // Accesses in this stretch do not reach the driver until EndLeavingOut.
    void LeaveOut(Long address, Long size) { m_leftOut.Add(address, size); }
    void EndLeavingOut() { m_leftOut.Clear(); }

    std::int32_t QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                               std::int32_t* address) override;
    std::int32_t QXCFG_ImageRead(std::int32_t lAddress, char* buffer, std::int32_t lSize) override;
    std::int32_t QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                  std::int32_t lSize) override;
    std::int32_t QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) override;
    std::int32_t QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) override;
    std::int32_t QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) override;
    std::int32_t QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) override;
    std::int32_t QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) override;
    std::int32_t QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) override;
    std::int32_t QXCFG_MemRequestClean() override;
    std::int32_t QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                     std::int32_t lSize) override;

protected:
    std::int32_t Noted(std::string_view function, DriverResult kind, std::int32_t result) override;

private:
    [[nodiscard]] bool IsLeftOut(Long address, Long size) const {
        return !m_leftOut.IsEmpty() && m_leftOut.Contains(address, size);
    }

    void NoteWritten(Long address, Long size);

    std::optional<FailedCall> m_failure;
    Stretches m_written;
    Stretch m_lastWritten{0,
                          0}; // not yet in m_written: numbers are mostly written one after another
    Stretches m_requested;
    std::vector<TransferRequest> m_requests;
    UnreadableEntries m_unreadable;
    Stretches m_leftOut;
};

} // namespace qx::host
