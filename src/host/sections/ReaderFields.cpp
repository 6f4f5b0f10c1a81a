#include "host/sections/ReaderFields.h"

#include "qxcontrols/readers/TrackSlots.h"

namespace qx::host {

void VisitFraming(FieldVisitor& fields, MagneticTrack& track) {
    track.SetHeaderEnabled(fields.Flag({"headerEnabled", "Send prefix"}, track.HeaderEnabled()));
    fields.Sequence({"header", "Prefix"}, track.Header(), kTrackSlotSize);
    track.SetTerminatorEnabled(
        fields.Flag({"terminatorEnabled", "Send suffix"}, track.TerminatorEnabled()));
    fields.Sequence({"terminator", "Suffix"}, track.Terminator(), kTrackSlotSize);
}

} // namespace qx::host
