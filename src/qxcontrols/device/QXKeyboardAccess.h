// QXKeyboardAccess: the service through which everything else accesses the keyboard.
//
// The host creates one for a driver, calls Init, and passes it to every module control. Only this
// class calls the driver, on the thread of its caller. Transfers are allowed after a successful
// Init; Done must be called before the host closes. Members report failure by their result, by a
// trace line where one is named, and by an exception only where documented: a driver that
// throws counts as failed with status -1, with a trace line, and a handler that throws during Init
// ends the stage that raised its event.
#pragma once

#include "qxcontrols/common/Event.h"
#include "qxcontrols/device/ConfigDirEntry.h"
#include "qxcontrols/device/ConfigDriver.h"
#include "qxcontrols/platform/Platform.h"

#include <deque>
#include <string>
#include <string_view>

namespace qx {

class QXKeyboardAccess {
public:
    // The maximum size of one block operation, in bytes.
    static constexpr Long kMaxBlockSize = 64000;

    // The driver and the platform's services must outlive this object.
    explicit QXKeyboardAccess(ConfigDriver& driver, const Platform& platform = {});
    ~QXKeyboardAccess();
    QXKeyboardAccess(const QXKeyboardAccess&) = delete;
    QXKeyboardAccess& operator=(const QXKeyboardAccess&) = delete;

    // Start-up: opens the driver, reads the directory (appending to existing entries), the names
    // and the flags. True if the keyboard is ready, even if its names cannot be read.
    bool Init();
    // Returns the keyboard's layer keys to the user. The driver stays open.
    void Done();

    // The start-up's progress. lErrID is the driver's status in InitDriverFailed, else 0.
    Event<> InitDriver;
    Event<Long> InitDriverWithDelta; // lDelta
    Event<> InitDriverOK;
    Event<Long> InitDriverFailed; // lErrID
    Event<> InitConfigurationTable;
    Event<> InitConfigurationTableOK;
    Event<Long> InitConfigurationTableFailed; // lErrID
    Event<> InitKeyboardNaming;
    Event<> InitKeyboardNamingOK;
    Event<Long> InitKeyboardNamingFailed; // lErrID
    Event<> InitOK;                       // never raised: success is the result of Init
    Event<Long> InitFailed;               // lErrID

    // The keyboard's identification as of the last Init: upper case, with every character except A
    // to Z, 0 to 9, "-" and "_" replaced. Trailing replacements are removed from the name; the
    // other texts have four characters.
    [[nodiscard]] const std::string& Keyboard() const { return m_keyboard; }
    [[nodiscard]] const std::string& Bootloader() const { return m_bootloader; }
    [[nodiscard]] const std::string& Program() const { return m_program; }
    [[nodiscard]] const std::string& Config() const { return m_config; }
    [[nodiscard]] const std::string& Country() const { return m_country; }

    // The keyboard's capabilities as of the last Init.
    [[nodiscard]] bool FlagFreeProgrammableKeys() const { return m_flags.freeProgKeys; }
    [[nodiscard]] bool FlagConnectionV24() const { return m_flags.connectionV24; }
    [[nodiscard]] bool FlagChicpcardReader() const { return m_flags.chipcardReader; }
    [[nodiscard]] bool FlagBarcodeReader() const { return m_flags.barcodeReader; }
    [[nodiscard]] bool FlagMagneticTrack1() const { return m_flags.magneticTracks[0]; }
    [[nodiscard]] bool FlagMagneticTrack2() const { return m_flags.magneticTracks[1]; }
    [[nodiscard]] bool FlagMagneticTrack3() const { return m_flags.magneticTracks[2]; }
    [[nodiscard]] bool FlagMagneticTrack4() const { return m_flags.magneticTracks[3]; }

    // Replaces invalid characters of the identification; initially "x", may be empty.
    [[nodiscard]] const std::string& ReplacmentChar() const { return m_replacement; }
    void SetReplacmentChar(std::string sReplacement) { m_replacement = std::move(sReplacement); }
    // Only stored: start-up passes 0 to the driver.
    void SetCommandDelta(Long lDelta) { m_commandDelta = lDelta; }

    // The configuration directory. Positions count from 1; a search by id finds the first match.
    // The entries belong to the directory and may be changed.
    [[nodiscard]] Integer DirectorySize() const;
    [[nodiscard]] ConfigDirEntry* DirectoryItem(Integer nIndex); // null when absent
    [[nodiscard]] const ConfigDirEntry* DirectoryItem(Integer nIndex) const;
    [[nodiscard]] ConfigDirEntry* DirectoryItemByModule(KeyboardModuleIDs eModule);
    [[nodiscard]] const ConfigDirEntry* DirectoryItemByModule(KeyboardModuleIDs eModule) const;
    [[nodiscard]] Long GetBaseAddressForModule(KeyboardModuleIDs eModule) const; // -1 when absent
    [[nodiscard]] bool HasItem(KeyboardModuleIDs eID) const;

    // Blocks of the configuration image, one character per byte, 0 to kMaxBlockSize bytes; other
    // sizes fail. A failed read leaves sData unchanged. If sData is shorter than lSize, a write
    // fills up with spaces. Failures are traced with the address.
    bool ReadFromMemory(std::string& sData, Long lAddress, Long lSize);
    bool WriteIntoMemory(std::string_view sData, Long lAddress, Long lSize);
    [[nodiscard]] Byte ReadByteFromMem(Long lAddress); // 0 if the driver refuses
    bool WriteByteMemory(Byte bValue, Long lAddress);

    // Single numbers of the image, in the driver's byte order; 0 if the driver refuses to read.
    // They and ReadByteFromMem do not trace their names, and WriteByteMemory traces only its value:
    // controls call them in inner loops, once for every byte or number of a block.
    [[nodiscard]] Byte ReadByteFromImage(Long lAddress);
    void WriteByteIntoImage(Long lAddress, const Byte& bByte);
    [[nodiscard]] Integer ReadIntFromImage(Long lAddress);
    void WriteIntIntoImage(Long lAddress, const Integer& nInt);
    [[nodiscard]] Long ReadLongFromImage(Long lAddress);
    void WriteLongIntoImage(Long lAddress, const Long& lLong);

    // The transfer. Upload moves the requested stretches from the keyboard to the image, Download
    // from the image to the keyboard; both return the driver's status (0: success).
    void DataTransferPrepare();
    void MemRequestClean();
    // Ids that exceed 16 bits are ignored.
    void MemRequestAdd(KeyboardModuleIDs eModule, Long lAddress, Long lSize);
    [[nodiscard]] Long Upload();
    [[nodiscard]] Long Download();
    void DataTransferFixUp();
    // Sets the message, and the window, that transfers post their progress to.
    void SetNotificationValues(Long theWindow, Long lMsg, Long lWhat = -1);

    // Files in the driver's own formats; all return the driver's status (0: success). Names are
    // passed to the driver as 8-bit text, and return as the driver leaves them, up to the first 0.
    [[nodiscard]] Long SaveRomIntoFile(std::string& sFilename);
    [[nodiscard]] Long LoadRomFromFile(std::string& sFilename);
    [[nodiscard]] Long SaveChipcardRomIntoFile(std::string& sFilename);
    [[nodiscard]] Long LoadChipcardRomFromFile(std::string& sFilename);
    [[nodiscard]] Long SaveParameterIntoFile(std::string& sFilename);
    [[nodiscard]] Long LoadParameterFromFile(std::string& sFilename);
    void SetChipcardRomParameters(Integer nBaudRateIndex, Integer nComPort);
    [[nodiscard]] Long ConvertBinFileToRomFile(std::string& sBinFilename,
                                               std::string& sDestFilename, Long lParam1,
                                               Long lParam2, Long lParam3);

    // Position-programming mode: the keyboard reports pressed keys instead of typing.
    bool EnablePositionProgMode();
    bool DisablePositionProgMode();
    [[nodiscard]] bool IsPositionProgMode();
    [[nodiscard]] Long GetPositionCodeKey(); // the last key pressed; 0, -1 or -2 if none

    // Selects the function-key layer; does nothing without MODULE_LAYERED_FUNCKEYS.
    void SelectFunctionKeyLayer(Integer nLayer);
    void EnableFunctionKeyLayerSelection();
    void DisableFunctionKeyLayerSelection();

protected:
    // Waits the given seconds while the host handles its pending messages; returns at once below 1.
    // Throws std::overflow_error if the milliseconds exceed 32 bits.
    void WaitSeconds(Long lSeconds);

private:
    struct Flags {
        bool freeProgKeys = false;
        bool connectionV24 = false;
        bool chipcardReader = false;
        bool barcodeReader = false;
        bool magneticTracks[4] = {};
    };
    struct CapabilityBit;
    struct IdentificationField;
    static const CapabilityBit kCapabilityBits[];
    static const IdentificationField kIdentificationFields[];

    bool InitDriverStage();
    bool InitConfigurationTableStage();
    void InitKeyboardNamingStage();
    void ReadDirectory(Integer nSize);
    bool ReadIdentification();
    void ReadCapabilities();
    [[nodiscard]] const ConfigDirEntry* Find(KeyboardModuleIDs eModule) const;
    [[nodiscard]] std::string Identification(std::string_view sBlock,
                                             const IdentificationField& field) const;
    Long FileOperation(std::string_view sProcedure, Long (ConfigDriver::*operation)(char*),
                       std::string& sFilename);
    bool SwitchPositionMode(std::string_view sProcedure, Long (ConfigDriver::*operation)());

    ConfigDriver& m_driver;
    Platform m_platform;
    std::string m_replacement = "x";
    Long m_commandDelta = 0;
    std::string m_keyboard, m_bootloader, m_program, m_country, m_config;
    Flags m_flags;
    std::deque<ConfigDirEntry> m_directory; // entries do not move when it grows
    std::string m_readBuffer; // kMaxBlockSize bytes, so that a failed read leaves its target alone
};

} // namespace qx
