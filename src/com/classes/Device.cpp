#include "com/classes/ModuleContract.h"
#include "qxcontrols/device/ConfigDirEntry.h"
#include "qxcontrols/device/QXCommonKeyboard.h"
#include "qxcontrols/device/QXKeyboardAccess.h"

namespace qx::com {

template <>
const Enumeration& EnumerationOf<KeyboardModuleIDs>() {
    static const Enumeration table{
        "KeyboardModuleIDs",
        "{DEB68F40-08F8-4F03-AFE8-4C6451348672}",
        {
            {"MODULE_NONE", MODULE_NONE},
            {"MODULE_KEYBOARD", MODULE_KEYBOARD},
            {"MODULE_BARCODE_CONFIG", MODULE_BARCODE_CONFIG},
            {"MODULE_BARCODE_HEADERS", MODULE_BARCODE_HEADERS},
            {"MODULE_MAGNET_CONFIG", MODULE_MAGNET_CONFIG},
            {"MODULE_MAGNET_HEADERS", MODULE_MAGNET_HEADERS},
            {"MODULE_FREEPROGRAMMABLE_KEYS", MODULE_FREEPROGRAMMABLE_KEYS},
            {"MODULE_POS", MODULE_POS},
            {"MODULE_FUNCKEYS_X1_4610", MODULE_FUNCKEYS_X1_4610},
            {"MODULE_FUNCKEYS_X1_4620", MODULE_FUNCKEYS_X1_4620},
            {"MODULE_LAYERED_FUNCKEYS", MODULE_LAYERED_FUNCKEYS},
            {"MODULE_GUID", MODULE_GUID},
            {"MODULE_FUNCKEYS_X1_4630", MODULE_FUNCKEYS_X1_4630},
            {"MODULE_CONFIG_SECTION", MODULE_CONFIG_SECTION},
            {"MODULE_LAYER_FUNCKEY_DESC", MODULE_LAYER_FUNCKEY_DESC},
        }};
    return table;
}

template <>
const Class& TableOf<ConfigDirEntry>() {
    using C = ConfigDirEntry;
    static const Class table =
        ClassBuilder<C>("ConfigDirEntry", Look::None, "{B0B70D22-326B-405E-B8B2-0B96CB430623}",
                        "{CB5AF68C-1F6B-4192-BC1E-E0DB7CD35D3B}")
            .Property("StartAddress", 1, &C::StartAddress, &C::SetStartAddress)
            .Property("BufferLength", 2, &C::BufferLength, &C::SetBufferLength)
            .Property("ModuleName", 3, &C::ModuleName, &C::SetModuleName)
            .Property("ModuleType", 4, &C::ModuleType, &C::SetModuleType)
            .Built();
    return table;
}

template <>
const Class& TableOf<QXKeyboardAccess>() {
    using C = QXKeyboardAccess;
    static const Class table =
        ClassBuilder<C>(
            "QXKeyboardAccess", Look::Invisible, "{1E8D274B-F7C4-4979-ABFE-3AD5C202F455}",
            "{ACF81C3C-A3FE-4A0F-85B6-BC9861E7CCCE}", "{26A576C0-5A39-4D89-9095-405885E72471}")
            .CreatedBy([](const Environment& environment) {
                return std::make_shared<C>(environment.driver, environment.platform);
            })
            .Method("Init", 1, &C::Init)
            .Method("Done", 2, &C::Done)
            .Property("Keyboard", 3, &C::Keyboard)
            .Property("Bootloader", 4, &C::Bootloader)
            .Property("Program", 5, &C::Program)
            .Property("Config", 6, &C::Config)
            .Property("Country", 7, &C::Country)
            .Property("FlagFreeProgrammableKeys", 8, &C::FlagFreeProgrammableKeys)
            .Property("FlagConnectionV24", 9, &C::FlagConnectionV24)
            .Property("FlagChicpcardReader", 10, &C::FlagChicpcardReader)
            .Property("FlagBarcodeReader", 11, &C::FlagBarcodeReader)
            .Property("FlagMagneticTrack1", 12, &C::FlagMagneticTrack1)
            .Property("FlagMagneticTrack2", 13, &C::FlagMagneticTrack2)
            .Property("FlagMagneticTrack3", 14, &C::FlagMagneticTrack3)
            .Property("FlagMagneticTrack4", 15, &C::FlagMagneticTrack4)
            .Property("ReplacmentChar", 16, &C::ReplacmentChar, &C::SetReplacmentChar)
            .SetOnly("CommandDelta", 17, &C::SetCommandDelta)
            .Method("DirectorySize", 18, &C::DirectorySize)
            .Method("DirectoryItem", 19, Changing(&C::DirectoryItem), {"nIndex"})
            .Method("DirectoryItemByModule", 20, Changing(&C::DirectoryItemByModule), {"eModule"})
            .Method("GetBaseAddressForModule", 21, &C::GetBaseAddressForModule, {"eModule"})
            .Method("HasItem", 22, &C::HasItem, {"eID"})
            .Method("ReadFromMemory", 23, &C::ReadFromMemory,
                    {Out(Block("sData")), "lAddress", "lSize"})
            .Method("WriteIntoMemory", 24, &C::WriteIntoMemory,
                    {Block("sData"), "lAddress", "lSize"})
            .Method("ReadByteFromMem", 25, &C::ReadByteFromMem, {"lAddress"})
            .Method("WriteByteMemory", 26, &C::WriteByteMemory, {"bValue", "lAddress"})
            .Method("ReadByteFromImage", 27, &C::ReadByteFromImage, {"lAddress"})
            .Method("WriteByteIntoImage", 28, &C::WriteByteIntoImage, {"lAddress", "bByte"})
            .Method("ReadIntFromImage", 29, &C::ReadIntFromImage, {"lAddress"})
            .Method("WriteIntIntoImage", 30, &C::WriteIntIntoImage, {"lAddress", "nInt"})
            .Method("ReadLongFromImage", 31, &C::ReadLongFromImage, {"lAddress"})
            .Method("WriteLongIntoImage", 32, &C::WriteLongIntoImage, {"lAddress", "lLong"})
            .Method("DataTransferPrepare", 33, &C::DataTransferPrepare)
            .Method("MemRequestClean", 34, &C::MemRequestClean)
            .Method("MemRequestAdd", 35, &C::MemRequestAdd, {"eModule", "lAddress", "lSize"})
            .Method("Upload", 36, &C::Upload)
            .Method("Download", 37, &C::Download)
            .Method("DataTransferFixUp", 38, &C::DataTransferFixUp)
            .Method("SetNotificationValues", 39, &C::SetNotificationValues,
                    {"theWindow", "lMsg", Optional("lWhat", -1)})
            .Method("SaveRomIntoFile", 40, &C::SaveRomIntoFile, {"sFilename"})
            .Method("LoadRomFromFile", 41, &C::LoadRomFromFile, {"sFilename"})
            .Method("SaveChipcardRomIntoFile", 42, &C::SaveChipcardRomIntoFile, {"sFilename"})
            .Method("LoadChipcardRomFromFile", 43, &C::LoadChipcardRomFromFile, {"sFilename"})
            .Method("SaveParameterIntoFile", 44, &C::SaveParameterIntoFile, {"sFilename"})
            .Method("LoadParameterFromFile", 45, &C::LoadParameterFromFile, {"sFilename"})
            .Method("SetChipcardRomParameters", 46, &C::SetChipcardRomParameters,
                    {"nBaudRateIndex", "nComPort"})
            .Method("ConvertBinFileToRomFile", 47, &C::ConvertBinFileToRomFile,
                    {"sBinFilename", "sDestFilename", "lParam1", "lParam2", "lParam3"})
            .Method("EnablePositionProgMode", 48, &C::EnablePositionProgMode)
            .Method("DisablePositionProgMode", 49, &C::DisablePositionProgMode)
            .Method("IsPositionProgMode", 50, &C::IsPositionProgMode)
            .Method("GetPositionCodeKey", 51, &C::GetPositionCodeKey)
            .Method("SelectFunctionKeyLayer", 52, &C::SelectFunctionKeyLayer, {"nLayer"})
            .Method("EnableFunctionKeyLayerSelection", 53, &C::EnableFunctionKeyLayerSelection)
            .Method("DisableFunctionKeyLayerSelection", 54, &C::DisableFunctionKeyLayerSelection)
            .Event("InitDriver", 1, &C::InitDriver)
            .Event("InitDriverWithDelta", 2, &C::InitDriverWithDelta, {"lDelta"})
            .Event("InitDriverOK", 3, &C::InitDriverOK)
            .Event("InitDriverFailed", 4, &C::InitDriverFailed, {"lErrID"})
            .Event("InitConfigurationTable", 5, &C::InitConfigurationTable)
            .Event("InitConfigurationTableOK", 6, &C::InitConfigurationTableOK)
            .Event("InitConfigurationTableFailed", 7, &C::InitConfigurationTableFailed, {"lErrID"})
            .Event("InitKeyboardNaming", 8, &C::InitKeyboardNaming)
            .Event("InitKeyboardNamingOK", 9, &C::InitKeyboardNamingOK)
            .Event("InitKeyboardNamingFailed", 10, &C::InitKeyboardNamingFailed, {"lErrID"})
            .Event("InitOK", 11, &C::InitOK)
            .Event("InitFailed", 12, &C::InitFailed, {"lErrID"})
            .Built();
    return table;
}

template <>
const Class& TableOf<QXCommonKeyboard>() {
    using C = QXCommonKeyboard;
    static const Class table = [] {
        ClassBuilder<C> builder(
            "QXCommonKeyboard", Look::Visible, "{6B19962F-80F2-4A9B-9021-0BA85F1204EB}",
            "{769CF3B1-67FC-453B-BB01-953AB829E9BD}", "{4CF0556D-EDBA-4CAF-BCA0-F7836E38791C}");
        AddModuleContract(builder);
        return builder.Service("LayoutSource", 2, &C::SetLayoutSource)
            .Property("CaptionOutputDelay", 16, &C::CaptionOutputDelay, &C::SetCaptionOutputDelay)
            .Built();
    }();
    return table;
}

} // namespace qx::com
