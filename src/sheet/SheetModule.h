// The key sheet as a library that is loaded on demand: one function with C linkage; texts are
// UTF-8.
#pragma once

#include <cstdint>

namespace qx::sheet {

struct SheetRequest {
    const char* document;     // the configuration document's text
    const char* documentName; // as printed; may be empty
    const char* layoutFolder; // empty: the shipped layouts
    const char* layoutName;   // a file name or a language id
    const char* date;         // as printed
    const char* file;         // the output: .pdf or .svg
};

enum class SheetStatus : std::int32_t {
    Written = 0,
    WrongSuffix = 1,
    FileFailed = 2,
    Failed = 3, // any other error; the caller should have checked the document and layout
};

inline constexpr const char* kWriteFunction = "QXSHEET_Write";

// Writes the sheet of a valid document. On failure, `error` holds the reason, truncated to
// errorSize bytes including the final zero.
using WriteFunction = std::int32_t (*)(const SheetRequest* request, char* error,
                                       std::int32_t errorSize);

} // namespace qx::sheet
