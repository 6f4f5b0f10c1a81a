// The magnetic-stripe reader's settings, and their layout in the keyboard's memory.
//
// The area of MODULE_MAGNET_HEADERS contains the sequences of the four tracks; three bytes of
// switches are in that of MODULE_MAGNET_CONFIG.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/MagneticOptions.h"
#include "qxcontrols/readers/TrackSlots.h"

#include <array>
#include <string>
#include <string_view>

namespace qx {

struct MagneticSettings {
    MagneticOptions options;
    std::array<MagneticTrack, kMagneticTracks> tracks;
};

// The switches block; the headers block is that of EncodeTrackSlots.
[[nodiscard]] std::string EncodeMagneticSwitches(const MagneticSettings& settings);
// Decodes a block of kMagneticSwitchesSize bytes.
void DecodeMagneticSwitches(std::string_view block, MagneticSettings& settings);

} // namespace qx
