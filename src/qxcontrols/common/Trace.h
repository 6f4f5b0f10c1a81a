// The trace: one-line texts with which the controls report their progress to developers.
#pragma once

#include <functional>
#include <string_view>

namespace qx {

// Traces one complete text; never fails. The text is discarded if no sink is set.
void Trace(std::string_view sText);

// Traces the label followed by the bytes in hexadecimal; the text is built only if a sink is set,
// because whole areas of the keyboard are traced.
void TraceBytes(std::string_view sLabel, std::string_view sBytes);

using TraceSink = std::function<void(std::string_view)>;

// Sends all later texts to `sink`; an empty one discards them again. Exceptions of a sink are
// ignored.
void SetTraceSink(TraceSink sink);

// For a catch-all handler: traces the current exception as "Error in " and the procedure, the
// number of its category, " - " and its text.
void TraceError(std::string_view sProcedure);

} // namespace qx
