#include "host/sections/ReaderFields.h"

#include "qxcontrols/readers/TrackSlots.h"

namespace qx::host {

void VisitFraming(FieldVisitor& fields, MagneticTrack& track) {
    track.SetHeaderEnabled(fields.Flag({"headerEnabled", "header enabled"}, track.HeaderEnabled()));
    fields.Sequence({"header", "header"}, track.Header(), kTrackSlotSize);
    track.SetTerminatorEnabled(
        fields.Flag({"terminatorEnabled", "terminator enabled"}, track.TerminatorEnabled()));
    fields.Sequence({"terminator", "terminator"}, track.Terminator(), kTrackSlotSize);
}

} // namespace qx::host
