#include "qxcontrols/settings/Preferences.h"

namespace qx {

namespace {

using T = PreferenceType;
using enum PreferenceStorage;

constexpr std::string_view kCommon = "Common";
constexpr std::string_view kStartMode = "StartMode";
constexpr std::string_view kLowLevel = "LowLevel";
constexpr std::string_view kColor = "Color";
constexpr std::string_view kPosColor = "Color"; // shared with the key colours; value names differ
constexpr std::string_view kLastDocument = "LastDocument";
constexpr std::string_view kStartWizard = "StartWizard";

constexpr Long kTrue = -1;
constexpr Long kFalse = 0;
constexpr Long kYellow = 0x0000FFFF;
constexpr Long kBlue = 0x00FF0000;
constexpr Long kRed = 0x000000FF;
constexpr Long kButtonFace = static_cast<Long>(0x8000000F);

constexpr PreferenceInfo PosColorBlock(int block, std::string_view sProperty,
                                       std::string_view sValueName) {
    const auto first = static_cast<int>(Preference::POSColorBlock0);
    return {static_cast<Preference>(first + block),
            sProperty,
            kPosColor,
            sValueName,
            T::Colour,
            kBlue,
            kBlue};
}

// clang-format off
constexpr PreferenceInfo kTable[] = {
    {Preference::AdvancedEditor, "AdvancedEditor", kCommon, "InvokeSequencer", T::Integer16, 0, 0},
    {Preference::PreferedAppLang, "PreferedAppLang", kCommon, "Language", T::Integer16, 0, 0},
    {Preference::PreferedKeyLang, "PreferedKeyLang", kCommon, "KeyboardLayout", T::Integer16, 0, 0},
    {Preference::AutoSave, "AutoSave", kCommon, "AutoSave", T::Boolean, kTrue, kFalse},
    {Preference::AutoTestdrive, "AutoTestdrive", kCommon, "TestDrive", T::Boolean, kTrue, kTrue},
    {Preference::ShowUpcodes, "ShowUpcodes", kCommon, "ShowUpCode", T::Boolean, kTrue, kTrue},
    {Preference::NewDocumentOnStartup, "NewDocumentOnStartup", kCommon, "NewDocOnStart", T::Boolean, kTrue, kTrue},
    {Preference::VerifyFirmware, "VerifyFirmware", kStartMode, "Firmware", T::Boolean, kTrue, kTrue},
    {Preference::VersionFirmware, "VersionFirmware", kStartMode, "FirmwareVersion", T::Integer16, 256, 256},
    {Preference::ChipcardPort, "ChipcardPort", kCommon, "Chipcard COM", T::Integer16, 2, 2},
    {Preference::ChipcardBaudrate, "ChipcardBaudrate", kCommon, "Chipcard RATE", T::Integer16, 0, 0},
    {Preference::CommandDelta, "CommandDelta", kLowLevel, "Command Delta", T::Long, 10, 10},
    {Preference::KeyFontSize, "KeyFontSize", kCommon, "Key Font Size", T::Integer16, 6, {}},
    {Preference::ColorUnused, "ColorUnused", kColor, "ForeColor Default", T::Colour, kButtonFace, kButtonFace},
    {Preference::ColorCurr, "ColorCurr", kColor, "ForeColor Current Key", T::Colour, kYellow, kYellow},
    {Preference::ColorEmpty, "ColorEmpty", kColor, "ForeColor Programable", T::Colour, kBlue, kBlue},
    {Preference::ColorProg, "ColorProg", kColor, "ForeColor Programed Key", T::Colour, kRed, kRed},
    {Preference::POSColorUnused, "POSColorUnused", kPosColor, "Color Unused", T::Colour, kButtonFace, kButtonFace},
    {Preference::POSColorCurrent, "POSColorCurrent", kPosColor, "Color Current", T::Colour, kYellow, kYellow},
    PosColorBlock(0, "POSColorBlock0", "Block Color0"),
    PosColorBlock(1, "POSColorBlock1", "Block Color1"),
    PosColorBlock(2, "POSColorBlock2", "Block Color2"),
    PosColorBlock(3, "POSColorBlock3", "Block Color3"),
    PosColorBlock(4, "POSColorBlock4", "Block Color4"),
    PosColorBlock(5, "POSColorBlock5", "Block Color5"),
    PosColorBlock(6, "POSColorBlock6", "Block Color6"),
    PosColorBlock(7, "POSColorBlock7", "Block Color7"),
    PosColorBlock(8, "POSColorBlock8", "Block Color8"),
    PosColorBlock(9, "POSColorBlock9", "Block Color9"),
    {Preference::PosCodePage, "PosCodePage", kCommon, "CodePage", T::String, 0, {}},
    {Preference::WinState, "WinState", kCommon, "WinState", T::Integer16, 2, {}, Window},
    {Preference::WinWidth, "WinWidth", kCommon, "Width", T::Long, 10410, {}, Window},
    {Preference::WinHeight, "WinHeight", kCommon, "Height", T::Long, 8205, {}, Window},
    {Preference::WinTop, "WinTop", kCommon, "Top", T::Long, 120, {}, Window},
    {Preference::WinLeft, "WinLeft", kCommon, "Left", T::Long, 120, {}, Window},
    {Preference::LastDownloadFile, "LastDownloadFile", kLastDocument, "LastDoc", T::String, 0, {}, AtOnce},
    {Preference::ShowStartupWizard, "ShowStartupWizard", kStartWizard, "Wizard", T::Boolean, kTrue, {}, AtOnce},
    {Preference::ShowStartupAction, "ShowStartupAction", kStartWizard, "Selection", T::Integer16, 0, {}, AtOnce},
};
// clang-format on

constexpr bool IsInOrder() {
    for (std::size_t i = 0; i < kPreferenceCount; ++i)
        if (static_cast<std::size_t>(kTable[i].id) != i)
            return false;
    return true;
}
static_assert(std::size(kTable) == kPreferenceCount && IsInOrder());

} // namespace

std::span<const PreferenceInfo, kPreferenceCount> Preferences() {
    return kTable;
}

const PreferenceInfo& InfoOf(Preference preference) {
    return kTable[static_cast<std::size_t>(preference)];
}

} // namespace qx
