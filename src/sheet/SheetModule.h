// The key sheet as a library that is loaded on demand: one function with C linkage; texts are
// UTF-8.
#pragma once

namespace qx::sheet {

struct SheetRequest {
    const char* document;     // the configuration document's text
    const char* documentName; // as printed; may be empty
    const char* layoutFolder; // empty: the shipped layouts
    const char* layoutName;   // a file name or a language id
    const char* date;         // as printed
    const char* file;         // the output: .pdf or .svg
};

inline constexpr const char* kWriteFunction = "QXSHEET_Write";

// Writes the sheet of a valid document. Returns null, or the error as JSON (see host/ErrorJson.h),
// which stays valid until the next call.
using WriteFunction = const char* (*)(const SheetRequest* request);

} // namespace qx::sheet
