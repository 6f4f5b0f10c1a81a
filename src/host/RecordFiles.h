// Records: JSON files, one per event, named by the time. Once a call returns, its record survives
// a loss of power; a record is never seen half-written.
//
// All failures are Error(FileFailed) that names the file.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "json/Reader.h"

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

// The format name of a kind of record, and its version.
struct RecordFormat {
    std::string_view name; // "qx-receipt"
    int version;
    bool isHashed = false; // a record has the hash of itself, and is refused without it
};

// Writes the members after the format's own into the file, in one step.
void WriteRecord(const std::filesystem::path& file, const RecordFormat& format,
                 const Json& members);
// The same into a new file, of the user's own and on the disk for good when it returns.
void WriteNewRecord(const std::filesystem::path& file, const RecordFormat& format,
                    const Json& members);
// The same in this folder, created if needed, under a unique name that begins with the time.
std::filesystem::path WriteNewRecord(const std::filesystem::path& folder, Time time,
                                     const std::string& ending, const RecordFormat& format,
                                     const Json& members);
// The same with any text.
std::filesystem::path WriteNewFile(const std::filesystem::path& folder, Time time,
                                   const std::string& ending, const std::string& text);

// Reads a record: `read` reads its members. Throws if it has any fault, including members that
// `read` does not ask for, or a wrong hash.
void ReadRecord(const std::filesystem::path& file, const RecordFormat& format,
                const std::function<void(json::Object&)>& read);

// A record that cannot be used, and why.
struct DamagedRecord {
    std::filesystem::path file;
    Error error;
};

// Reads all records of the folder with this ending, in the order of their names, and skips those
// that have been deleted meanwhile. Returns the ones that cannot be used.
[[nodiscard]] std::vector<DamagedRecord>
ReadRecords(const std::filesystem::path& folder, std::string_view ending,
            const RecordFormat& format,
            const std::function<void(const std::filesystem::path&, json::Object&)>& read);

// The files of the folder with this ending, in the order of their names; none without a folder.
[[nodiscard]] std::vector<std::filesystem::path> RecordsIn(const std::filesystem::path& folder,
                                                           std::string_view ending);

// Removes a record for good.
void RemoveRecord(const std::filesystem::path& file);

} // namespace qx::host
