// The key sheet as a library that is loaded on demand: its one function, in C, of texts in UTF-8.
#pragma once

#include <cstdint>

namespace qx::sheet {

struct SheetRequest {
    const char* document;     // the configuration document itself
    const char* documentName; // as it is to be printed; may be empty
    const char* layoutFolder; // empty: of the shipped layouts
    const char* layoutName;   // a file name or the number of a language
    const char* date;         // as it is to be printed
    const char* file;         // to be written: .pdf or .svg
};

enum class SheetStatus : std::int32_t {
    Written = 0,
    WrongSuffix = 1,
    FileFailed = 2,
    Failed = 3, // all else; the document and the layout should have been checked before
};

inline constexpr const char* kWriteFunction = "QXSHEET_Write";

// Writes the sheet of a valid document. On failure, `error` holds why, cut to errorSize bytes with
// the final zero.
using WriteFunction = std::int32_t (*)(const SheetRequest* request, char* error,
                                       std::int32_t errorSize);

} // namespace qx::sheet
