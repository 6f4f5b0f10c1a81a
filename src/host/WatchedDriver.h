// WatchedDriver: a driver that remembers what the controls themselves do not look at.
//
// It notes the first call that failed, of those whose status the system looks at, which stretches
// of the image have been written, and which have been requested. It also keeps accesses away from
// stretches that no module has: a control that works with the address -1 of a module that the
// keyboard lacks is answered with success and zeros, and nothing reaches the driver. It makes no
// calls of its own.
#pragma once

#include "host/Error.h"
#include "host/ForwardingDriver.h"
#include "host/Stretches.h"

#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <optional>
#include <string>
#include <vector>

namespace qx::host {

// A stretch that the next transfer moves, with the module's id for which it was requested.
struct TransferRequest {
    KeyboardModuleIDs module;
    Long address;
    Long size;
};

class WatchedDriver : public ForwardingDriver {
public:
    explicit WatchedDriver(ConfigDriver& inner) : ForwardingDriver(inner) {}

    // Forgets failures, writes and requests; stretches to leave out stay.
    void BeginOperation();

    // The first call since then that failed, of those whose status matters to a result.
    [[nodiscard]] const std::optional<FailedCall>& Failure() const { return m_failure; }
    // The entries of the directory that could not be read, which is not a failure.
    struct UnreadableEntries {
        int count = 0;
        Integer first = 0; // from 0
        Long status = 0;   // of the first
    };
    [[nodiscard]] const UnreadableEntries& Unreadable() const { return m_unreadable; }
    [[nodiscard]] const Stretches& Written();
    [[nodiscard]] const Stretches& Requested() const { return m_requested; }
    // The same as they were requested, since the list was last emptied.
    [[nodiscard]] const std::vector<TransferRequest>& Requests() const { return m_requests; }

    // Accesses that lie in this stretch are kept from the driver until EndLeavingOut.
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
