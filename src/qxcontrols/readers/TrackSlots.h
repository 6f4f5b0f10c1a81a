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

// A sequence with the code -1 among its first kTrackSlotSize has no slot: it and each later one get
// the next sequence, and the last gets blanks (see KeySequence.h). Throws std::overflow_error for
// any other of these codes outside 0 to 255.
[[nodiscard]] std::string EncodeTrackSlots(std::span<const MagneticTrack> tracks);

void DecodeTrackSlots(std::string_view block, std::span<MagneticTrack> tracks);

} // namespace qx
