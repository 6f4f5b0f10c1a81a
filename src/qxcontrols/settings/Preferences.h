// Preferences: the user's preferences and their places in the registry.
//
// One table lists every preference with its place, type and defaults. QXProgSettings uses it to
// load, save and reset; a host lists the preferences from it.
#pragma once

#include "qxcontrols/common/Types.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace qx {

// In the order of the table, which is the order of reading.
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
    Colour, // 0x00BBGGRR; with the top bit set, the index of a system colour in the low byte
    Boolean,
    String,
};

// The function that writes a preference to the registry.
enum class PreferenceStorage {
    Settings, // Save
    Window,   // SaveWinPos
    AtOnce,   // its own setter; not kept in memory
};

struct PreferenceInfo {
    Preference id;
    std::string_view property;  // the name of its property
    std::string_view subKey;    // below the application's key
    std::string_view valueName; // in the registry: the device program's own name
    PreferenceType type;
    Long loadDefault;            // for a value missing in the registry; Booleans -1 and 0
    std::optional<Long> resetTo; // set by SetDefaults; if empty, SetDefaults does not change it
    PreferenceStorage storage = PreferenceStorage::Settings;
};

// The table; texts are empty by default. A preference's entry is at the index of its number.
[[nodiscard]] std::span<const PreferenceInfo, kPreferenceCount> Preferences();

[[nodiscard]] const PreferenceInfo& InfoOf(Preference preference);

} // namespace qx
