#include "com/ClassBuilder.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx::com {
namespace {

// Empty if there is no such block.
Value PosColorBlock(QXProgSettings& self, Integer nBlockID) {
    const Long color = self.POSColorBlock(nBlockID);
    return nBlockID >= 0 && nBlockID < QXProgSettings::kPosBlocks ? Value(color) : Value();
}

} // namespace

template <>
const Class& TableOf<QXProgSettings>() {
    using C = QXProgSettings;
    static const Class table =
        ClassBuilder<C>("QXProgSettings", Look::Invisible, "{783A0367-5EF6-44FE-81EF-4AF6F3506A46}",
                        "{57FEE733-FF0E-45B1-A7EF-7B553DF17D79}",
                        "{FFDC1D39-E295-4B32-A400-C409829737FA}")
            .CreatedBy([](const Environment& environment) {
                return std::make_shared<C>(environment.registry, environment.platform);
            })
            .Property("PreferedAppLang", 1, &C::PreferedAppLang, &C::SetPreferedAppLang)
            .Property("PreferedKeyLang", 2, &C::PreferedKeyLang, &C::SetPreferedKeyLang)
            .Property("AutoSave", 3, &C::AutoSave, &C::SetAutoSave)
            .Property("AutoTestdrive", 4, &C::AutoTestdrive, &C::SetAutoTestdrive)
            .Property("ShowUpcodes", 5, &C::ShowUpcodes, &C::SetShowUpcodes)
            .Property("VerifyFirmware", 6, &C::VerifyFirmware, &C::SetVerifyFirmware)
            .Property("VersionFirmware", 7, &C::VersionFirmware, &C::SetVersionFirmware)
            .Property("CommandDelta", 8, &C::CommandDelta, &C::SetCommandDelta)
            .Property("ChipcardPort", 9, &C::ChipcardPort, &C::SetChipcardPort)
            .Property("KeyFontSize", 10, &C::KeyFontSize, &C::SetKeyFontSize)
            .Property("ChipcardBaudrate", 11, &C::ChipcardBaudrate, &C::SetChipcardBaudrate)
            .Property("NewDocumentOnStartup", 12, &C::NewDocumentOnStartup,
                      &C::SetNewDocumentOnStartup)
            .Property("ColorUnused", 13, &C::ColorUnused, &C::SetColorUnused)
            .Property("ColorEmpty", 14, &C::ColorEmpty, &C::SetColorEmpty)
            .Property("ColorProg", 15, &C::ColorProg, &C::SetColorProg)
            .Property("ColorCurr", 16, &C::ColorCurr, &C::SetColorCurr)
            .Property("POSColorUnused", 17, &C::POSColorUnused, &C::SetPOSColorUnused)
            .Property("POSColorCurrent", 18, &C::POSColorCurrent, &C::SetPOSColorCurrent)
            .Property("PosCodePage", 19, &C::PosCodePage, &C::SetPosCodePage)
            .Property("AdvancedEditor", 20, &C::AdvancedEditor, &C::SetAdvancedEditor)
            .Property("DataChanged", 21, &C::DataChanged)
            .Method("POSColorBlock", 22, PosColorBlock, {"nBlockID"})
            .Method("DefPOSColorBlock", 23, &C::DefPOSColorBlock, {"nBlockID", "lColor"})
            .Method("SetDefaults", 24, &C::SetDefaults)
            .Method("Load", 25, &C::Load)
            .Method("Save", 26, &C::Save)
            .Method("SetWinParam", 27, &C::SetWinParam,
                    {"nState", "nWidth", "nHeight", "nTop", "nLeft"})
            .Property("WinState", 28, &C::WinState)
            .Property("WinWidth", 29, &C::WinWidth)
            .Property("WinHeight", 30, &C::WinHeight)
            .Property("WinTop", 31, &C::WinTop)
            .Property("WinLeft", 32, &C::WinLeft)
            .Method("SaveWinPos", 33, &C::SaveWinPos)
            .Method("GetLastDownloadFile", 34, &C::GetLastDownloadFile)
            .Method("SetLastDownloadFile", 35, &C::SetLastDownloadFile, {"sFile"})
            .Method("GetShowStartupWizard", 36, &C::GetShowStartupWizard)
            .Method("SetShowStartupWizard", 37, &C::SetShowStartupWizard, {"fShow"})
            .Method("GetShowStartupAction", 38, &C::GetShowStartupAction)
            .Method("SetShowStartupAction", 39, &C::SetShowStartupAction, {"nAction"})
            .Built();
    return table;
}

} // namespace qx::com
