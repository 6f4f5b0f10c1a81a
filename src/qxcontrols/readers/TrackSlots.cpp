#include "qxcontrols/readers/TrackSlots.h"

#include "qxcontrols/blocks/BlockRoutines.h"

namespace qx {

std::string EncodeTrackSlots(std::span<const MagneticTrack> tracks) {
    std::string block;
    for (const MagneticTrack& track : tracks)
        for (const KeySequence* sequence : {&track.Header(), &track.Terminator()})
            block += SequenceToBytes(*sequence, kTrackSlotSize);
    return block;
}

void DecodeTrackSlots(std::string_view block, std::span<MagneticTrack> tracks) {
    Long position = 0;
    for (MagneticTrack& track : tracks)
        for (KeySequence* sequence : {&track.Header(), &track.Terminator()})
            BytesToSequence(*sequence, position, kTrackSlotSize, block);
}

} // namespace qx
