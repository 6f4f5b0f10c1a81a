// QXProgSettings: the user's preferences, stored in the current user's registry.
//
// The host creates one, calls Load, and passes it to every control that shows keys or colours. The
// preferences are kept in memory between Load and Save; before Load they have the values that Load
// uses for an empty registry. The last file and the start-up choices are read and written at once.
#pragma once

#include "qxcontrols/platform/Platform.h"
#include "qxcontrols/platform/RegistryAccess.h"
#include "qxcontrols/settings/Preferences.h"

#include <array>
#include <string>
#include <string_view>
#include <variant>

namespace qx {

class QXProgSettings {
public:
    static constexpr Integer kPosBlocks = 10; // that have a colour

    // The registry and the platform's services must outlive this object.
    explicit QXProgSettings(RegistryAccess& registry, const Platform& platform = {});

    // Reads all preferences. A missing value, one of another type and a number outside the
    // preference's range are not errors: the default is used.
    void Load();
    // Writes all preferences except the window's.
    void Save();
    // Sets all preferences to their defaults, except the font size, the code page and the window's.
    void SetDefaults();

    // Whether a preference has been changed since Load or Save; the window's do not count.
    [[nodiscard]] bool DataChanged() const { return m_dataChanged; }

    [[nodiscard]] Integer PreferedAppLang() const { return Int(Preference::PreferedAppLang); }
    void SetPreferedAppLang(Integer nLang) { Change(Preference::PreferedAppLang, nLang); }
    [[nodiscard]] Integer PreferedKeyLang() const { return Int(Preference::PreferedKeyLang); }
    void SetPreferedKeyLang(Integer nLang) { Change(Preference::PreferedKeyLang, nLang); }
    [[nodiscard]] bool AutoSave() const { return Bool(Preference::AutoSave); }
    void SetAutoSave(bool fOn) { ChangeBool(Preference::AutoSave, fOn); }
    [[nodiscard]] bool AutoTestdrive() const { return Bool(Preference::AutoTestdrive); }
    void SetAutoTestdrive(bool fOn) { ChangeBool(Preference::AutoTestdrive, fOn); }
    [[nodiscard]] bool ShowUpcodes() const { return Bool(Preference::ShowUpcodes); }
    void SetShowUpcodes(bool fOn) { ChangeBool(Preference::ShowUpcodes, fOn); }
    [[nodiscard]] bool VerifyFirmware() const { return Bool(Preference::VerifyFirmware); }
    void SetVerifyFirmware(bool fOn) { ChangeBool(Preference::VerifyFirmware, fOn); }
    [[nodiscard]] Integer VersionFirmware() const { return Int(Preference::VersionFirmware); }
    void SetVersionFirmware(Integer nVersion) { Change(Preference::VersionFirmware, nVersion); }
    [[nodiscard]] Long CommandDelta() const { return Number(Preference::CommandDelta); }
    void SetCommandDelta(Long lDelta) { Change(Preference::CommandDelta, lDelta); }
    [[nodiscard]] Integer ChipcardPort() const { return Int(Preference::ChipcardPort); }
    void SetChipcardPort(Integer nPort) { Change(Preference::ChipcardPort, nPort); }
    [[nodiscard]] Integer KeyFontSize() const { return Int(Preference::KeyFontSize); }
    void SetKeyFontSize(Integer nSize) { Change(Preference::KeyFontSize, nSize); }
    [[nodiscard]] Integer ChipcardBaudrate() const { return Int(Preference::ChipcardBaudrate); }
    void SetChipcardBaudrate(Integer nRate) { Change(Preference::ChipcardBaudrate, nRate); }
    [[nodiscard]] bool NewDocumentOnStartup() const {
        return Bool(Preference::NewDocumentOnStartup);
    }
    void SetNewDocumentOnStartup(bool fOn) { ChangeBool(Preference::NewDocumentOnStartup, fOn); }
    [[nodiscard]] Integer AdvancedEditor() const { return Int(Preference::AdvancedEditor); }
    void SetAdvancedEditor(Integer nMode) { Change(Preference::AdvancedEditor, nMode); }

    // The key display's colours; see PreferenceType::Colour.
    [[nodiscard]] Long ColorUnused() const { return Number(Preference::ColorUnused); }
    void SetColorUnused(Long lColor) { Change(Preference::ColorUnused, lColor); }
    [[nodiscard]] Long ColorEmpty() const { return Number(Preference::ColorEmpty); }
    void SetColorEmpty(Long lColor) { Change(Preference::ColorEmpty, lColor); }
    [[nodiscard]] Long ColorProg() const { return Number(Preference::ColorProg); }
    void SetColorProg(Long lColor) { Change(Preference::ColorProg, lColor); }
    [[nodiscard]] Long ColorCurr() const { return Number(Preference::ColorCurr); }
    void SetColorCurr(Long lColor) { Change(Preference::ColorCurr, lColor); }

    // The POS keys' colours, and those of the POS blocks 0 to 9. Another block is reported in a
    // message box; its colour is 0, and setting it does nothing.
    [[nodiscard]] Long POSColorUnused() const { return Number(Preference::POSColorUnused); }
    void SetPOSColorUnused(Long lColor) { Change(Preference::POSColorUnused, lColor); }
    [[nodiscard]] Long POSColorCurrent() const { return Number(Preference::POSColorCurrent); }
    void SetPOSColorCurrent(Long lColor) { Change(Preference::POSColorCurrent, lColor); }
    [[nodiscard]] Long POSColorBlock(Integer nBlockID) const;
    void DefPOSColorBlock(Integer nBlockID, Long lColor);

    // The file of the POS keys' code page.
    [[nodiscard]] const std::string& PosCodePage() const { return m_posCodePage; }
    void SetPosCodePage(std::string sFilename);

    // The main window's state and rectangle, in the host's twips.
    void SetWinParam(Integer nState, Long nWidth, Long nHeight, Long nTop, Long nLeft);
    void SaveWinPos();
    [[nodiscard]] Integer WinState() const { return Int(Preference::WinState); }
    [[nodiscard]] Long WinWidth() const { return Number(Preference::WinWidth); }
    [[nodiscard]] Long WinHeight() const { return Number(Preference::WinHeight); }
    [[nodiscard]] Long WinTop() const { return Number(Preference::WinTop); }
    [[nodiscard]] Long WinLeft() const { return Number(Preference::WinLeft); }

    // Read and written at once. The defaults are no file, the wizard shown, and action 0.
    [[nodiscard]] std::string GetLastDownloadFile() const;
    void SetLastDownloadFile(std::string_view sFile);
    [[nodiscard]] bool GetShowStartupWizard() const;
    void SetShowStartupWizard(bool fShow);
    [[nodiscard]] Integer GetShowStartupAction() const;
    void SetShowStartupAction(Integer nAction);

    // Any preference by its property name, as listed by Preferences(): a Boolean as bool, a text as
    // std::string, anything else as Long. Set changes the preference like its property; it throws
    // std::out_of_range for a number out of range. Both throw std::invalid_argument for an unknown
    // name, and Set also for a value of another type.
    using Value = std::variant<bool, Long, std::string>;
    [[nodiscard]] Value Get(std::string_view sProperty) const;
    void Set(std::string_view sProperty, const Value& value);

private:
    [[nodiscard]] Long Number(Preference preference) const;
    [[nodiscard]] Integer Int(Preference preference) const;
    [[nodiscard]] bool Bool(Preference preference) const { return Number(preference) != 0; }
    void Change(Preference preference, Long lValue);
    void ChangeBool(Preference preference, bool fValue) { Change(preference, fValue ? -1 : 0); }

    [[nodiscard]] Value Held(const PreferenceInfo& info) const;
    void Hold(const PreferenceInfo& info, const Value& value);
    [[nodiscard]] Value Read(const PreferenceInfo& info) const;
    void Write(const PreferenceInfo& info, const Value& value) const;
    void WriteAll(PreferenceStorage storage) const;
    void TraceWindow(std::string_view sTitle) const;

    RegistryAccess& m_registry;
    Platform m_platform;
    std::array<Long, kPreferenceCount> m_numbers{}; // Booleans as -1 and 0
    std::string m_posCodePage;                      // the only text that is stored
    bool m_dataChanged = false;
};

} // namespace qx
