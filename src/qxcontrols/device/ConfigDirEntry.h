// ConfigDirEntry: one entry of the keyboard's configuration directory.
#pragma once

#include "qxcontrols/device/KeyboardModuleIDs.h"

#include <string>
#include <utility>

namespace qx {

class ConfigDirEntry {
public:
    // Image address of the module's area.
    [[nodiscard]] Long StartAddress() const { return m_startAddress; }
    void SetStartAddress(Long lAddress) { m_startAddress = lAddress; }

    // Length of the area in bytes. The driver does not report it: entries read from the driver have
    // 0.
    [[nodiscard]] Long BufferLength() const { return m_bufferLength; }
    void SetBufferLength(Long lLength) { m_bufferLength = lLength; }

    // Display name; empty in entries read from the driver.
    [[nodiscard]] const std::string& ModuleName() const { return m_moduleName; }
    void SetModuleName(std::string sName) { m_moduleName = std::move(sName); }

    [[nodiscard]] KeyboardModuleIDs ModuleType() const { return m_moduleType; }
    void SetModuleType(KeyboardModuleIDs eModule) { m_moduleType = eModule; }

private:
    Long m_startAddress = 0;
    Long m_bufferLength = 0;
    std::string m_moduleName;
    KeyboardModuleIDs m_moduleType = MODULE_NONE;
};

} // namespace qx
