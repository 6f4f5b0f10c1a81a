// The sequence slots of a reader's inputs: for each input its header, then its terminator.
//
// The headers blocks of both readers consist of these.
#pragma once

#include "qxcontrols/device/MemoryMap.h"
#include "qxcontrols/readers/MagneticTrack.h"

#include <span>
#include <string>
#include <string_view>

namespace qx {

// A sequence with the code -1 has no slot; all later slots then move forward.
[[nodiscard]] std::string EncodeTrackSlots(std::span<const MagneticTrack> tracks);

void DecodeTrackSlots(std::string_view block, std::span<MagneticTrack> tracks);

} // namespace qx
