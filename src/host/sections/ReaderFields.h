// The fields shared by the sections of both readers.
#pragma once

#include "host/FieldVisitor.h"

namespace qx {
class MagneticTrack;
}

namespace qx::host {

// The header and the terminator of a reader's input, with their switches.
void VisitFraming(FieldVisitor& fields, MagneticTrack& track);

} // namespace qx::host
