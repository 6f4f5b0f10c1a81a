#include "host/sections/ReaderFields.h"

#include "qxcontrols/readers/TrackSlots.h"

namespace qx::host {

void VisitFraming(FieldVisitor& fields, MagneticTrack& track) {
    track.SetHeaderEnabled(fields.Flag({"headerEnabled", "prefix enabled"}, track.HeaderEnabled()));
    fields.Sequence({"header", "prefix"}, track.Header(), kTrackSlotSize);
    track.SetTerminatorEnabled(
        fields.Flag({"terminatorEnabled", "suffix enabled"}, track.TerminatorEnabled()));
    fields.Sequence({"terminator", "suffix"}, track.Terminator(), kTrackSlotSize);
}

} // namespace qx::host
