// The start-up of QXKeyboardAccess: the driver, the directory, names and flags.
#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

#include <algorithm>

namespace qx {

namespace {

constexpr Long kStartupDelta = 0;

bool IsAllowedInIdentification(char c) {
    return c == '-' || c == '_' || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

// Whether the text is exactly one character, in UTF-8.
bool IsOneCharacter(std::string_view sText) {
    return std::count_if(sText.begin(), sText.end(),
                         [](char c) { return (static_cast<Byte>(c) & 0xC0U) != 0x80U; }) == 1;
}

} // namespace

struct QXKeyboardAccess::CapabilityBit {
    Byte mask;
    std::string_view traceName;
    bool& (*flag)(Flags&);
};

const QXKeyboardAccess::CapabilityBit QXKeyboardAccess::kCapabilityBits[] = {
    {kFreeProgKeysBit, "FreeProgKeys    ", [](Flags& f) -> bool& { return f.freeProgKeys; }},
    {kConnectionV24Bit, "HasV24Connection", [](Flags& f) -> bool& { return f.connectionV24; }},
    {kChipcardReaderBit, "ChipcardReader  ", [](Flags& f) -> bool& { return f.chipcardReader; }},
    {kBarcodeReaderBit, "BarcodeReader   ", [](Flags& f) -> bool& { return f.barcodeReader; }},
    {kTrackBits[0], "HasMagTrack1    ", [](Flags& f) -> bool& { return f.magneticTracks[0]; }},
    {kTrackBits[1], "HasMagTrack2    ", [](Flags& f) -> bool& { return f.magneticTracks[1]; }},
    {kTrackBits[2], "HasMagTrack3    ", [](Flags& f) -> bool& { return f.magneticTracks[2]; }},
    {kTrackBits[3], "HasMagTrack4    ", [](Flags& f) -> bool& { return f.magneticTracks[3]; }},
};

struct QXKeyboardAccess::IdentificationField {
    IdentificationText place;
    bool stripTrailing;
    std::string_view traceLabel;
    std::string QXKeyboardAccess::*value;
};

const QXKeyboardAccess::IdentificationField QXKeyboardAccess::kIdentificationFields[] = {
    {kKeyboardText, true, "Keyboard   = ", &QXKeyboardAccess::m_keyboard},
    {kBootloaderText, false, "Bootloader = ", &QXKeyboardAccess::m_bootloader},
    {kProgramText, false, "Program    = ", &QXKeyboardAccess::m_program},
    {kCountryText, false, "Country    = ", &QXKeyboardAccess::m_country},
    {kConfigText, false, "Config     = ", &QXKeyboardAccess::m_config},
};

bool QXKeyboardAccess::Init() {
    Trace("QXKeyboardAccess.Init");
    if (InitDriverStage() && InitConfigurationTableStage()) {
        InitKeyboardNamingStage();
        if (HasItem(MODULE_LAYERED_FUNCKEYS))
            DisableFunctionKeyLayerSelection();
        return true;
    }
    try {
        InitFailed.Raise(0);
    } catch (...) { // the host's handlers may throw anything
        TraceError("QXKeyboardAccess.Init");
    }
    return false;
}

bool QXKeyboardAccess::InitDriverStage() {
    try {
        InitDriver.Raise();
        Trace("QXKeyboardAccess.InitDriverWithCommandDelta(" + std::to_string(kStartupDelta) + ")");
        m_driver.QXCFG_SetCommandDelta(kStartupDelta);
        InitDriverWithDelta.Raise(kStartupDelta);
        const Long status = m_driver.QXCFG_Init();
        if (status != 0) {
            InitDriverFailed.Raise(status);
            return false;
        }
        InitDriverOK.Raise();
        return true;
    } catch (...) { // the stage fails without another event
        TraceError("InitDriver");
        return false;
    }
}

bool QXKeyboardAccess::InitConfigurationTableStage() {
    try {
        InitConfigurationTable.Raise();
        Trace("InitConfigurationTable");
        const auto size = static_cast<Integer>(m_driver.QXCFG_ConfigDirectorySize());
        Trace("Number of entries = " + std::to_string(size));
        if (size == 0) {
            InitConfigurationTableFailed.Raise(0);
            return false;
        }
        ReadDirectory(size);
        InitConfigurationTableOK.Raise();
        return true;
    } catch (...) {
        TraceError("InitConfigurationTable");
        return false;
    }
}

void QXKeyboardAccess::ReadDirectory(Integer nSize) {
    for (Integer index = 0; index < nSize; ++index) {
        Long id = 0;
        Long address = 0;
        if (m_driver.QXCFG_ConfigDirectoryGetEntry(index, &id, &address) != 0)
            continue; // an unreadable entry must not hide the others
        ConfigDirEntry& entry = m_directory.emplace_back();
        entry.SetModuleType(static_cast<KeyboardModuleIDs>(static_cast<Integer>(id)));
        entry.SetStartAddress(address);
        Trace(std::to_string(index) + " ID = " + std::to_string(entry.ModuleType()) +
              " : Addr.= " + Hex(address));
    }
}

// A keyboard whose name or flags cannot be read can still be configured.
void QXKeyboardAccess::InitKeyboardNamingStage() {
    try {
        InitKeyboardNaming.Raise();
        m_flags = {};
        if (!ReadIdentification()) {
            InitKeyboardNamingFailed.Raise(0);
            return;
        }
        InitKeyboardNamingOK.Raise();
        ReadCapabilities();
    } catch (...) {
        m_flags = {}; // never keep those of an earlier keyboard
        TraceError("InitKeyboardNaming");
    }
}

bool QXKeyboardAccess::ReadIdentification() {
    std::string block;
    if (!ReadFromMemory(block, kIdentificationAddress, kIdentificationSize))
        return false;
    for (const IdentificationField& field : kIdentificationFields)
        this->*field.value = Identification(block, field);
    for (const IdentificationField& field : kIdentificationFields)
        Trace(std::string(field.traceLabel) + this->*field.value);
    return true;
}

void QXKeyboardAccess::ReadCapabilities() {
    std::string capabilities;
    if (!ReadFromMemory(capabilities, kCapabilityAddress, 1))
        return;
    for (const CapabilityBit& bit : kCapabilityBits)
        bit.flag(m_flags) = (static_cast<Byte>(capabilities[0]) & bit.mask) != 0;
    Trace("FLAG-DUMP--------------------------------------");
    for (const CapabilityBit& bit : kCapabilityBits)
        Trace("m_fFlag" + std::string(bit.traceName) + " = " +
              std::string(TrueFalse(bit.flag(m_flags))));
    Trace("-----------------------------------------------");
}

std::string QXKeyboardAccess::Identification(std::string_view sBlock,
                                             const IdentificationField& field) const {
    std::string text;
    for (char c : sBlock.substr(field.place.start, field.place.length)) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
        if (IsAllowedInIdentification(c))
            text += c;
        else
            text += m_replacement;
    }
    if (field.stripTrailing && IsOneCharacter(m_replacement))
        while (text.ends_with(m_replacement))
            text.resize(text.size() - m_replacement.size());
    return text;
}

} // namespace qx
