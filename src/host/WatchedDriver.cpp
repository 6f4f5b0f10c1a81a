#include "host/WatchedDriver.h"

#include <algorithm>

namespace qx::host {

void WatchedDriver::BeginOperation() {
    m_failure.reset();
    m_written.Clear();
    m_lastWritten = {0, 0};
    m_requested.Clear();
    m_requests.clear();
    m_unreadable = {};
}

void WatchedDriver::NoteWritten(Long address, Long size) {
    if (address != m_lastWritten.End()) {
        m_written.Add(m_lastWritten.address, m_lastWritten.size);
        m_lastWritten = {address, 0};
    }
    m_lastWritten.size += size;
}

const Stretches& WatchedDriver::Written() {
    m_written.Add(m_lastWritten.address, m_lastWritten.size);
    return m_written;
}

std::int32_t WatchedDriver::Noted(std::string_view function, DriverResult kind,
                                  std::int32_t result) {
    if (kind == DriverResult::Status && result != 0 && !m_failure)
        m_failure = FailedCall{std::string(function), result};
    return result;
}

std::int32_t WatchedDriver::QXCFG_ConfigDirectoryGetEntry(std::int16_t nIndex, std::int32_t* module,
                                                          std::int32_t* address) {
    const auto failure = m_failure;
    const std::int32_t status =
        ForwardingDriver::QXCFG_ConfigDirectoryGetEntry(nIndex, module, address);
    m_failure = failure;
    if (status != 0 && m_unreadable.count++ == 0)
        m_unreadable = {1, nIndex, status};
    return status;
}

std::int32_t WatchedDriver::QXCFG_ImageRead(std::int32_t lAddress, char* buffer,
                                            std::int32_t lSize) {
    if (!IsLeftOut(lAddress, lSize))
        return ForwardingDriver::QXCFG_ImageRead(lAddress, buffer, lSize);
    std::fill_n(buffer, lSize, '\0');
    return 0;
}

std::int32_t WatchedDriver::QXCFG_ImageReadByte(std::int32_t lAddress, std::uint8_t* value) {
    if (!IsLeftOut(lAddress, 1))
        return ForwardingDriver::QXCFG_ImageReadByte(lAddress, value);
    *value = 0;
    return 0;
}

std::int32_t WatchedDriver::QXCFG_ImageReadInt(std::int32_t lAddress, std::int16_t* value) {
    if (!IsLeftOut(lAddress, 2))
        return ForwardingDriver::QXCFG_ImageReadInt(lAddress, value);
    *value = 0;
    return 0;
}

std::int32_t WatchedDriver::QXCFG_ImageReadLong(std::int32_t lAddress, std::int32_t* value) {
    if (!IsLeftOut(lAddress, 4))
        return ForwardingDriver::QXCFG_ImageReadLong(lAddress, value);
    *value = 0;
    return 0;
}

std::int32_t WatchedDriver::QXCFG_ImageWrite(std::int32_t lAddress, const char* buffer,
                                             std::int32_t lSize) {
    if (IsLeftOut(lAddress, lSize))
        return 0;
    NoteWritten(lAddress, lSize);
    return ForwardingDriver::QXCFG_ImageWrite(lAddress, buffer, lSize);
}

std::int32_t WatchedDriver::QXCFG_ImageWriteByte(std::int32_t lAddress, std::uint8_t value) {
    if (IsLeftOut(lAddress, 1))
        return 0;
    NoteWritten(lAddress, 1);
    return ForwardingDriver::QXCFG_ImageWriteByte(lAddress, value);
}

std::int32_t WatchedDriver::QXCFG_ImageWriteInt(std::int32_t lAddress, std::int16_t value) {
    if (IsLeftOut(lAddress, 2))
        return 0;
    NoteWritten(lAddress, 2);
    return ForwardingDriver::QXCFG_ImageWriteInt(lAddress, value);
}

std::int32_t WatchedDriver::QXCFG_ImageWriteLong(std::int32_t lAddress, std::int32_t value) {
    if (IsLeftOut(lAddress, 4))
        return 0;
    NoteWritten(lAddress, 4);
    return ForwardingDriver::QXCFG_ImageWriteLong(lAddress, value);
}

std::int32_t WatchedDriver::QXCFG_MemRequestClean() {
    m_requested.Clear();
    m_requests.clear();
    return ForwardingDriver::QXCFG_MemRequestClean();
}

std::int32_t WatchedDriver::QXCFG_MemRequestAdd(std::int16_t nModule, std::int32_t lAddress,
                                                std::int32_t lSize) {
    if (IsLeftOut(lAddress, lSize))
        return 0;
    m_requested.Add(lAddress, lSize);
    m_requests.push_back({static_cast<KeyboardModuleIDs>(nModule), lAddress, lSize});
    return ForwardingDriver::QXCFG_MemRequestAdd(nModule, lAddress, lSize);
}

} // namespace qx::host
