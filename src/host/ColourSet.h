// ColourSet: designed colours for the keys, each of which the user can change in the preferences.
#pragma once

#include "qxcontrols/settings/QXProgSettings.h"

#include <array>
#include <optional>

namespace qx::host {

struct ColourSet {
    // Of the key displays, 0x00BBGGRR.
    Long unused, current, empty, programmed;
    Long noBlock; // of POS keys outside all blocks
    // Of the POS blocks: any two are easy to distinguish, also for colour-blind people.
    std::array<Long, QXProgSettings::kPosBlocks> blocks;
};

enum class ColourSetId {
    Light,
    Dark,
    Classic, // the preferences' own defaults
};
inline constexpr ColourSetId kColourSets[] = {ColourSetId::Light, ColourSetId::Dark,
                                              ColourSetId::Classic};

[[nodiscard]] ColourSet ColourSetOf(ColourSetId id);

// Gives the preferences these colours; they are not saved by this.
void UseColours(QXProgSettings& preferences, ColourSetId id);
// The set whose colours the preferences have; nothing when the user has chosen others.
[[nodiscard]] std::optional<ColourSetId> ColoursInUse(const QXProgSettings& preferences);
// The preference's colour in the set from which most of the preferences' colours are.
[[nodiscard]] Long DesignedColour(const QXProgSettings& preferences, Preference preference);

} // namespace qx::host
