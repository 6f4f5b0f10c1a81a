// Records: JSON files, one for each thing that happened, named by the time. What is written here
// survives a loss of power as soon as the call returns; a record is never seen half-written.
//
// All failures are Error(FileFailed) that names the file.
#pragma once

#include "host/Json.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

using Time = std::chrono::system_clock::time_point;
using Clock = std::function<Time()>;

// "2026-01-31T09:05:07.123Z", and the same for names of files: "20260131T090507.123Z".
[[nodiscard]] std::string TimeText(Time time);
[[nodiscard]] std::string TimeFileName(Time time);

// What a kind of record is called in its file, and which version is written.
struct RecordFormat {
    std::string_view name; // "qx-receipt"
    int version;           // all from 1 on are read
};

// A name in the folder, made where it is missing, that begins with the time and is not in use.
[[nodiscard]] std::string NewRecordName(const std::filesystem::path& folder, Time time,
                                        std::string_view ending);

// Writes the members after the format's own.
void WriteRecord(const std::filesystem::path& file, const RecordFormat& format,
                 const Json& members);
// Reads a record and hands it to `read`, which may throw anything for a member that is wrong.
void ReadRecord(const std::filesystem::path& file, const RecordFormat& format,
                const std::function<void(const Json&)>& read);

// The files of the folder whose names end so, in the order of their names; none without a folder.
[[nodiscard]] std::vector<std::filesystem::path> RecordsIn(const std::filesystem::path& folder,
                                                           std::string_view ending);

// Removes a record for good.
void RemoveRecord(const std::filesystem::path& file);

} // namespace qx::host
