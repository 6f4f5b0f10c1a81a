// Preferences: what the user can prefer, and where the registry keeps it.
//
// One table names every preference, its place, its type and its defaults. QXProgSettings loads,
// saves and resets by it; a host lists the preferences from it.
#pragma once

#include "qxcontrols/common/Types.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace qx {

// In the order of the table, which is the order in which they are read.
enum class Preference : std::uint8_t {
    AdvancedEditor,
    PreferedAppLang,
    PreferedKeyLang,
    AutoSave,
    AutoTestdrive,
    ShowUpcodes,
    NewDocumentOnStartup,
    VerifyFirmware,
    VersionFirmware,
    ChipcardPort,
    ChipcardBaudrate,
    CommandDelta,
    KeyFontSize,
    ColorUnused,
    ColorCurr,
    ColorEmpty,
    ColorProg,
    POSColorUnused,
    POSColorCurrent,
    POSColorBlock0, // nine more follow
    PosCodePage = POSColorBlock0 + 10,
    WinState,
    WinWidth,
    WinHeight,
    WinTop,
    WinLeft,
    LastDownloadFile,
    ShowStartupWizard,
    ShowStartupAction,
};
inline constexpr std::size_t kPreferenceCount =
    static_cast<std::size_t>(Preference::ShowStartupAction) + 1;

enum class PreferenceType {
    Integer16,
    Long,
    Colour, // 0x00BBGGRR; with the top bit, the system's colour of the low byte's index
    Boolean,
    String,
};

// Who writes a preference to the registry.
enum class PreferenceStorage {
    Settings, // Save
    Window,   // SaveWinPos
    AtOnce,   // its own setter; nothing is held in memory
};

struct PreferenceInfo {
    Preference id;
    std::string_view property;  // the name of the property that holds it
    std::string_view subKey;    // below the application's key
    std::string_view valueName; // in the registry; the device program's own, unlike the property's
    PreferenceType type;
    Long loadDefault;            // for a value that the registry lacks; Booleans -1 and 0
    std::optional<Long> resetTo; // by SetDefaults; without one it leaves the preference alone
    PreferenceStorage storage = PreferenceStorage::Settings;
};

// The table; texts are empty by default. The entry of a preference is the one at its number.
[[nodiscard]] std::span<const PreferenceInfo, kPreferenceCount> Preferences();

[[nodiscard]] const PreferenceInfo& InfoOf(Preference preference);

} // namespace qx
