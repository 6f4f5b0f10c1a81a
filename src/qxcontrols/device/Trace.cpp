#include "qxcontrols/device/Trace.h"

#include <utility>

namespace qx {

namespace {

TraceSink& Sink() {
    static TraceSink sink;
    return sink;
}

} // namespace

void Trace(std::string_view sText) {
    if (!Sink())
        return;
    try {
        Sink()(sText);
    } catch (...) { // a trace must not change what the traced code does
    }
}

void SetTraceSink(TraceSink sink) {
    Sink() = std::move(sink);
}

} // namespace qx
