// The trace: one-line texts by which the controls report their progress to developers.
#pragma once

#include <functional>
#include <string_view>

namespace qx {

// Takes one complete text, returns nothing, never fails. Discards the text unless a sink is set.
void Trace(std::string_view sText);

// The label followed by the bytes in hexadecimal, put together only when a sink takes the text:
// whole areas of the keyboard are traced.
void TraceBytes(std::string_view sLabel, std::string_view sBytes);

using TraceSink = std::function<void(std::string_view)>;

// Sends all later texts to `sink`; an empty one discards them again. What a sink throws is dropped.
void SetTraceSink(TraceSink sink);

// Traces the exception that is being handled, as "Error in " and the procedure, the number of its
// kind, " - " and its text. For a handler that catches everything.
void TraceError(std::string_view sProcedure);

} // namespace qx
