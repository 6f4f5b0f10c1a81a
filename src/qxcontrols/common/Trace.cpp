#include "qxcontrols/common/Trace.h"

#include "qxcontrols/common/Text.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

namespace qx {

namespace {

// The numbers of the categories of run-time errors.
constexpr int kUnknownError = 5;
constexpr int kOverflow = 6;
constexpr int kOutOfMemory = 7;
constexpr int kOutOfRange = 9;

void TraceError(std::string_view sProcedure, int nNumber, std::string_view sText) {
    Trace(std::string("Error in ")
              .append(sProcedure)
              .append(" " + std::to_string(nNumber) + " - ")
              .append(sText));
}

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
    } catch (...) { // tracing must not affect the traced code
    }
}

void TraceBytes(std::string_view sLabel, std::string_view sBytes) {
    if (Sink())
        Trace(std::string(sLabel).append(HexBytes(sBytes)));
}

void TraceError(std::string_view sProcedure) {
    try {
        throw;
    } catch (const std::overflow_error& error) {
        TraceError(sProcedure, kOverflow, error.what());
    } catch (const std::bad_alloc& error) {
        TraceError(sProcedure, kOutOfMemory, error.what());
    } catch (const std::out_of_range& error) {
        TraceError(sProcedure, kOutOfRange, error.what());
    } catch (const std::exception& error) {
        TraceError(sProcedure, kUnknownError, error.what());
    } catch (...) {
        TraceError(sProcedure, kUnknownError, "unknown error");
    }
}

void SetTraceSink(TraceSink sink) {
    Sink() = std::move(sink);
}

} // namespace qx
