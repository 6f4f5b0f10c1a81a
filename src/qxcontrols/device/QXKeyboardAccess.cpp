#include "qxcontrols/device/QXKeyboardAccess.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/platform/AnsiText.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

// Replaces the status of a driver call that threw.
constexpr Long kNoStatus = -1;

// Makes one driver call. Drivers report errors by status; one that throws has failed too.
template <typename Call>
Long StatusOf(std::string_view sProcedure, Call call) {
    try {
        return call();
    } catch (...) {
        TraceError("QXKeyboardAccess." + std::string(sProcedure));
        return kNoStatus;
    }
}

} // namespace

QXKeyboardAccess::QXKeyboardAccess(ConfigDriver& driver, const Platform& platform)
    : m_driver(driver), m_platform(platform) {
    Trace("QXKeyboardAccess.UserControl_Initialize");
}

QXKeyboardAccess::~QXKeyboardAccess() {
    Trace("QXKeyboardAccess.UserControl_Terminate");
}

void QXKeyboardAccess::Done() {
    Trace("The Keyboard.Done");
    if (HasItem(MODULE_LAYERED_FUNCKEYS))
        EnableFunctionKeyLayerSelection();
}

Integer QXKeyboardAccess::DirectorySize() const {
    Trace("QXKeyboardAccess.DirectorySize");
    constexpr std::size_t kMost = std::numeric_limits<Integer>::max();
    return static_cast<Integer>(std::min(m_directory.size(), kMost));
}

const ConfigDirEntry* QXKeyboardAccess::DirectoryItem(Integer nIndex) const {
    Trace("QXKeyboardAccess.DirectoryItem");
    if (nIndex < 1 || static_cast<std::size_t>(nIndex) > m_directory.size()) {
        Trace("Error in DirectoryItem(" + std::to_string(nIndex) + ")");
        return nullptr;
    }
    return &m_directory[static_cast<std::size_t>(nIndex - 1)];
}

ConfigDirEntry* QXKeyboardAccess::DirectoryItem(Integer nIndex) {
    return const_cast<ConfigDirEntry*>(std::as_const(*this).DirectoryItem(nIndex));
}

const ConfigDirEntry* QXKeyboardAccess::Find(KeyboardModuleIDs eModule) const {
    const auto found =
        std::find_if(m_directory.begin(), m_directory.end(),
                     [&](const ConfigDirEntry& entry) { return entry.ModuleType() == eModule; });
    return found == m_directory.end() ? nullptr : &*found;
}

const ConfigDirEntry* QXKeyboardAccess::DirectoryItemByModule(KeyboardModuleIDs eModule) const {
    Trace("QXKeyboardAccess.DirectoryItemByModule");
    return Find(eModule);
}

ConfigDirEntry* QXKeyboardAccess::DirectoryItemByModule(KeyboardModuleIDs eModule) {
    return const_cast<ConfigDirEntry*>(std::as_const(*this).DirectoryItemByModule(eModule));
}

Long QXKeyboardAccess::GetBaseAddressForModule(KeyboardModuleIDs eModule) const {
    Trace("QXKeyboardAccess.GetBaseAddressForModule");
    const ConfigDirEntry* entry = Find(eModule);
    return entry != nullptr ? entry->StartAddress() : -1;
}

bool QXKeyboardAccess::HasItem(KeyboardModuleIDs eID) const {
    Trace("QXKeyboardAccess.HasItem");
    return Find(eID) != nullptr;
}

bool QXKeyboardAccess::ReadFromMemory(std::string& sData, Long lAddress, Long lSize) {
    Trace("QXKeyboardAccess.ReadFromMemory");
    Long status = kNoStatus;
    if (lSize >= 0 && lSize <= kMaxBlockSize) {
        m_readBuffer.resize(kMaxBlockSize);
        // No bytes of an earlier block may remain.
        std::fill_n(m_readBuffer.begin(), lSize, '\0');
        status = StatusOf("ReadFromMemory", [&] {
            return m_driver.QXCFG_ImageRead(lAddress, m_readBuffer.data(), lSize);
        });
    }
    if (status != 0) {
        Trace("QXKeyboardAccess.ReadFromMemory failed at " + Hex(lAddress));
        return false;
    }
    sData.assign(m_readBuffer, 0, static_cast<std::size_t>(lSize));
    return true;
}

bool QXKeyboardAccess::WriteIntoMemory(std::string_view sData, Long lAddress, Long lSize) {
    Trace("QXKeyboardAccess.WriteIntoMemory");
    Long status = kNoStatus;
    if (lSize >= 0 && lSize <= kMaxBlockSize) {
        std::string filledUp;
        if (sData.size() < static_cast<std::size_t>(lSize)) {
            filledUp.assign(sData);
            filledUp.resize(static_cast<std::size_t>(lSize), ' ');
        }
        const char* data = filledUp.empty() ? sData.data() : filledUp.data();
        status = StatusOf("WriteIntoMemory",
                          [&] { return m_driver.QXCFG_ImageWrite(lAddress, data, lSize); });
    }
    Trace("WriteIntoMemory : Address = " + Hex(lAddress) +
          "  Size = " + std::to_string(sData.size()) + " Err = " + std::to_string(status));
    if (status != 0)
        Trace("QXKeyboardAccess.WriteIntoMemory failed at " + Hex(lAddress));
    return status == 0;
}

Byte QXKeyboardAccess::ReadByteFromMem(Long lAddress) {
    char buffer[2] = {};
    const Long status =
        StatusOf("ReadByteFromMem", [&] { return m_driver.QXCFG_ImageRead(lAddress, buffer, 1); });
    return status == 0 ? static_cast<Byte>(buffer[0]) : Byte{0};
}

bool QXKeyboardAccess::WriteByteMemory(Byte bValue, Long lAddress) {
    const char buffer = static_cast<char>(bValue);
    const Long status = StatusOf("WriteByteMemory",
                                 [&] { return m_driver.QXCFG_ImageWrite(lAddress, &buffer, 1); });
    Trace("WriteByteMemory (" + Hex(lAddress) + ") = " + Hex(bValue));
    if (status != 0)
        Trace("QXKeyboardAccess.WriteByteMemory failed at " + Hex(lAddress));
    return status == 0;
}

Byte QXKeyboardAccess::ReadByteFromImage(Long lAddress) {
    Byte value = 0;
    const Long status = StatusOf("ReadByteFromImage",
                                 [&] { return m_driver.QXCFG_ImageReadByte(lAddress, &value); });
    return status == 0 ? value : Byte{0};
}

void QXKeyboardAccess::WriteByteIntoImage(Long lAddress, const Byte& bByte) {
    StatusOf("WriteByteIntoImage", [&] { return m_driver.QXCFG_ImageWriteByte(lAddress, bByte); });
}

Integer QXKeyboardAccess::ReadIntFromImage(Long lAddress) {
    Integer value = 0;
    const Long status =
        StatusOf("ReadIntFromImage", [&] { return m_driver.QXCFG_ImageReadInt(lAddress, &value); });
    return status == 0 ? value : Integer{0};
}

void QXKeyboardAccess::WriteIntIntoImage(Long lAddress, const Integer& nInt) {
    StatusOf("WriteIntIntoImage", [&] { return m_driver.QXCFG_ImageWriteInt(lAddress, nInt); });
}

Long QXKeyboardAccess::ReadLongFromImage(Long lAddress) {
    Long value = 0;
    const Long status = StatusOf("ReadLongFromImage",
                                 [&] { return m_driver.QXCFG_ImageReadLong(lAddress, &value); });
    return status == 0 ? value : 0;
}

void QXKeyboardAccess::WriteLongIntoImage(Long lAddress, const Long& lLong) {
    StatusOf("WriteLongIntoImage", [&] { return m_driver.QXCFG_ImageWriteLong(lAddress, lLong); });
}

void QXKeyboardAccess::DataTransferPrepare() {
    Trace("QXKeyboardAccess.DataTransferPrepare");
    MemRequestClean();
}

void QXKeyboardAccess::MemRequestClean() {
    Trace("QXKeyboardAccess.MemRequestClean()");
    StatusOf("MemRequestClean", [&] { return m_driver.QXCFG_MemRequestClean(); });
}

void QXKeyboardAccess::MemRequestAdd(KeyboardModuleIDs eModule, Long lAddress, Long lSize) {
    Trace("QXKeyboardAccess.MemRequestAdd");
    StatusOf("MemRequestAdd", [&] {
        using Limits = std::numeric_limits<Integer>;
        if (eModule < Limits::min() || eModule > Limits::max())
            throw std::overflow_error("module id " + std::to_string(eModule) + " exceeds 16 bits");
        return m_driver.QXCFG_MemRequestAdd(static_cast<Integer>(eModule), lAddress, lSize);
    });
}

Long QXKeyboardAccess::Upload() {
    Trace("QXKeyboardAccess.Upload");
    return StatusOf("Upload", [&] { return m_driver.QXCFG_ImageLoad(); });
}

Long QXKeyboardAccess::Download() {
    Trace("QXKeyboardAccess.Download");
    return StatusOf("Download", [&] { return m_driver.QXCFG_ImageSave(); });
}

void QXKeyboardAccess::DataTransferFixUp() {
    Trace("QXKeyboardAccess.DataTransferFixUp");
    MemRequestClean();
}

void QXKeyboardAccess::SetNotificationValues(Long theWindow, Long lMsg, Long lWhat) {
    Trace("QXKeyboardAccess.SetNotificationValues");
    StatusOf("SetNotificationValues",
             [&] { return m_driver.QXCFG_TransferNotification(theWindow, lMsg, lWhat); });
}

Long QXKeyboardAccess::FileOperation(std::string_view sProcedure,
                                     Long (ConfigDriver::*operation)(char*),
                                     std::string& sFilename) {
    Trace("QXKeyboardAccess." + std::string(sProcedure) + "(" + sFilename + ")");
    AnsiArgument name(sFilename);
    return StatusOf(sProcedure, [&] { return (m_driver.*operation)(name.Buffer()); });
}

Long QXKeyboardAccess::SaveRomIntoFile(std::string& sFilename) {
    return FileOperation("SaveRomIntoFile", &ConfigDriver::QXCFG_KeyboardRomSave, sFilename);
}

Long QXKeyboardAccess::LoadRomFromFile(std::string& sFilename) {
    return FileOperation("LoadRomFromFile", &ConfigDriver::QXCFG_KeyboardRomLoad, sFilename);
}

Long QXKeyboardAccess::SaveChipcardRomIntoFile(std::string& sFilename) {
    return FileOperation("SaveChipcardRomIntoFile", &ConfigDriver::QXCFG_KeyboardChipcardRomSave,
                         sFilename);
}

Long QXKeyboardAccess::LoadChipcardRomFromFile(std::string& sFilename) {
    return FileOperation("LoadChipcardRomFromFile", &ConfigDriver::QXCFG_KeyboardChipcardRomLoad,
                         sFilename);
}

Long QXKeyboardAccess::SaveParameterIntoFile(std::string& sFilename) {
    return FileOperation("SaveParameterIntoFile", &ConfigDriver::QXCFG_KeyboardParamSave,
                         sFilename);
}

Long QXKeyboardAccess::LoadParameterFromFile(std::string& sFilename) {
    return FileOperation("LoadParameterFromFile", &ConfigDriver::QXCFG_KeyboardParamLoad,
                         sFilename);
}

void QXKeyboardAccess::SetChipcardRomParameters(Integer nBaudRateIndex, Integer nComPort) {
    Trace("QXKeyboardAccess.SetChipcardRomParameters");
    StatusOf("SetChipcardRomParameters",
             [&] { return m_driver.QXCFG_ChipcardIOParam(nBaudRateIndex, nComPort); });
}

Long QXKeyboardAccess::ConvertBinFileToRomFile(std::string& sBinFilename,
                                               std::string& sDestFilename, Long lParam1,
                                               Long lParam2, Long lParam3) {
    Trace("QXKeyboardAccess.ConvertBinFileToRomFile");
    AnsiArgument source(sBinFilename);
    AnsiArgument destination(sDestFilename);
    return StatusOf("ConvertBinFileToRomFile", [&] {
        return m_driver.QXCFG_ConvertBinFileIntoRomFile(source.Buffer(), destination.Buffer(),
                                                        lParam1, lParam2, lParam3);
    });
}

bool QXKeyboardAccess::SwitchPositionMode(std::string_view sProcedure,
                                          Long (ConfigDriver::*operation)()) {
    Trace("QXKeyboardAccess." + std::string(sProcedure));
    const Long status = StatusOf(sProcedure, [&] { return (m_driver.*operation)(); });
    Trace(std::string(sProcedure) + (status == 0 ? " OK" : " FAILED"));
    return status == 0;
}

bool QXKeyboardAccess::EnablePositionProgMode() {
    return SwitchPositionMode("EnablePositionProgMode", &ConfigDriver::QXCFG_EnablePositionMode);
}

bool QXKeyboardAccess::DisablePositionProgMode() {
    return SwitchPositionMode("DisablePositionProgMode", &ConfigDriver::QXCFG_DisablePositionMode);
}

bool QXKeyboardAccess::IsPositionProgMode() {
    Trace("QXKeyboardAccess.IsPositionProgMode");
    return StatusOf("IsPositionProgMode", [&] { return m_driver.QXCFG_IsPositionMode(); }) == 0;
}

Long QXKeyboardAccess::GetPositionCodeKey() {
    Trace("QXKeyboardAccess.GetPositionCodeKey");
    return StatusOf("GetPositionCodeKey", [&] { return m_driver.QXCFG_GetPositionKey(); });
}

void QXKeyboardAccess::SelectFunctionKeyLayer(Integer nLayer) {
    Trace("QXKeyboardAccess.SelectFunctionKeyLayer");
    if (HasItem(MODULE_LAYERED_FUNCKEYS))
        StatusOf("SelectFunctionKeyLayer", [&] { return m_driver.QXCFG_SelectLayer(nLayer); });
}

void QXKeyboardAccess::EnableFunctionKeyLayerSelection() {
    Trace("QXKeyboardAccess.EnableFunctionKeyLayerSelection");
    if (HasItem(MODULE_LAYERED_FUNCKEYS))
        StatusOf("EnableFunctionKeyLayerSelection",
                 [&] { return m_driver.QXCFG_EnableLayerSelection(); });
}

void QXKeyboardAccess::DisableFunctionKeyLayerSelection() {
    Trace("QXKeyboardAccess.DisableFunctionKeyLayerSelection");
    if (HasItem(MODULE_LAYERED_FUNCKEYS))
        StatusOf("DisableFunctionKeyLayerSelection",
                 [&] { return m_driver.QXCFG_DisableLayerSelection(); });
}

void QXKeyboardAccess::WaitSeconds(Long lSeconds) {
    if (lSeconds < 1)
        return;
    if (lSeconds > std::numeric_limits<Long>::max() / 1000)
        throw std::overflow_error("a wait of " + std::to_string(lSeconds) + " seconds");
    const auto milliseconds = static_cast<std::uint32_t>(lSeconds) * 1000U;
    const std::uint32_t start = m_platform.tickCounter->GetTickCount();
    while (m_platform.tickCounter->GetTickCount() - start <= milliseconds) // survives a wrap
        m_platform.pendingMessages->Process();
}

} // namespace qx
