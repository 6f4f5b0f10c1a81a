// The magnetic-stripe reader's settings, and how they lie in the keyboard's memory.
//
// The sequences of the four tracks fill the area of MODULE_MAGNET_HEADERS; three bytes of switches
// lie inside that of MODULE_MAGNET_CONFIG.
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
// Takes a block of kMagneticSwitchesSize bytes.
void DecodeMagneticSwitches(std::string_view block, MagneticSettings& settings);

} // namespace qx
