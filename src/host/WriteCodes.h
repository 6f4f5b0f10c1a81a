// WriteCodes: the kinds of writes and their results.
#pragma once

#include <string_view>

namespace qx::host {

enum class WriteAction {
    Download, // of a document
    Restore,  // of a backup; resolves interrupted writes
    Finish,   // of an interrupted write
    RollBack, // of an interrupted write
    // Of files in the driver's format:
    LoadRom,
    LoadChipcardRom,
    LoadParameter,
};
[[nodiscard]] constexpr WriteAction LastOf(WriteAction) {
    return WriteAction::LoadParameter;
}

enum class WriteResult {
    Verified,
    NotVerified,
    // Of a write that failed:
    NothingChanged,
    Written,       // the keyboard holds all of it
    PartlyWritten, // it holds a part of it
    Differs,       // it holds something else
    Unknown,
};
[[nodiscard]] constexpr WriteResult LastOf(WriteResult) {
    return WriteResult::Unknown;
}

// Their names in records, "roll back", "param load"; "not verified", "partly written".
[[nodiscard]] std::string_view CodeOf(WriteAction action);
[[nodiscard]] std::string_view CodeOf(WriteResult result);

} // namespace qx::host
