#include "host/RecordFiles.h"

#include "files/Files.h"
#include "files/Sha256.h"
#include "files/SystemTexts.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdio>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

constexpr const char* kHash = "recordSha256"; // of the text without it

void Guarded(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const std::exception& error) {
        throw FileError(error);
    }
}

std::string Formatted(Time time, const char* format) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const hh_mm_ss clock(floor<milliseconds>(time - day));
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, int(date.year()), unsigned(date.month()),
                  unsigned(date.day()), int(clock.hours().count()), int(clock.minutes().count()),
                  int(clock.seconds().count()), int(clock.subseconds().count()));
    return text.data();
}

std::string RecordText(const RecordFormat& format, const Json& members) {
    Json record = {{"format", format.name}, {"version", format.version}};
    record.update(members);
    if (format.isHashed)
        record[kHash] = files::Sha256(PrettyText(record));
    return PrettyText(record);
}

// Takes the hash off the record.
bool IsAsWritten(Json& record, json::Object& members) {
    const auto hash = members.Get(kHash).Text();
    record.erase(kHash);
    if (hash && files::Sha256(PrettyText(record)) != *hash)
        members.Whole().Refuse(FaultKind::NotAsWritten);
    return members.Whole().AllFaults().Count() == 0;
}

} // namespace

std::string TimeText(Time time) {
    return Formatted(time, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ");
}

std::string TimeFileName(Time time) {
    return Formatted(time, "%04d%02u%02uT%02d%02d%02d.%03dZ");
}

void WriteRecord(const fs::path& file, const RecordFormat& format, const Json& members) {
    Guarded([&] { files::WriteFileAtomically(file, RecordText(format, members)); });
}

void WriteNewRecord(const fs::path& file, const RecordFormat& format, const Json& members) {
    Guarded([&] {
        if (!files::WriteNewFile(file, RecordText(format, members)))
            throw files::ProblemError({.deed = files::Deed::Write,
                                       .subject = files::TextOf(file),
                                       .obstacle = files::Obstacle::AlreadyThere});
    });
}

fs::path WriteNewRecord(const fs::path& folder, Time time, const std::string& ending,
                        const RecordFormat& format, const Json& members) {
    return WriteNewFile(folder, time, ending, RecordText(format, members));
}

fs::path WriteNewFile(const fs::path& folder, Time time, const std::string& ending,
                      const std::string& text) {
    static std::atomic<unsigned> count = 0; // in this program
    const std::string start = TimeFileName(time) + "-" + std::to_string(files::ProcessId()) + "-";
    fs::path file;
    Guarded([&] {
        files::MakeFolder(folder);
        files::RemoveLeftovers(folder);
        do
            file = folder / files::PathOf(start + std::to_string(++count) + ending);
        while (!files::WriteNewFile(file, text));
    });
    return file;
}

void ReadRecord(const fs::path& file, const RecordFormat& format,
                const std::function<void(json::Object&)>& read) {
    std::string text;
    Guarded([&] { text = files::ReadFile(file, files::kMostOfRecord); });
    try {
        Json record = ParseStrictly(text, files::kMostOfRecord);
        json::Faults faults;
        json::Object members(json::Value(record, "", faults));
        if (HasFormat(members, format.name, format.version) &&
            (!format.isHashed || IsAsWritten(record, members))) {
            read(members);
            members.RefuseOthers();
        }
        faults.ThrowAny();
    } catch (const json::FaultError& error) {
        throw Error(Cause::RecordDamaged,
                    {.place = {.file = files::TextOf(file)}, .faults = error.Faults()});
    }
}

std::vector<DamagedRecord>
ReadRecords(const fs::path& folder, std::string_view ending, const RecordFormat& format,
            const std::function<void(const fs::path&, json::Object&)>& read) {
    std::vector<DamagedRecord> damaged;
    for (const fs::path& file : RecordsIn(folder, ending)) {
        try {
            ReadRecord(file, format, [&](json::Object& record) { read(file, record); });
        } catch (const Error& error) {
            std::error_code ignored;
            if (fs::exists(file, ignored))
                damaged.push_back({file, error});
        }
    }
    return damaged;
}

std::vector<fs::path> RecordsIn(const fs::path& folder, std::string_view ending) {
    std::vector<fs::path> records;
    std::error_code reason;
    if (!fs::exists(folder, reason) && !reason)
        return records;
    fs::directory_iterator entries(folder, reason);
    if (reason)
        throw FileError(files::ProblemError({.deed = files::Deed::Read,
                                             .subject = files::TextOf(folder),
                                             .system = files::ReasonOf(reason)}));
    for (const fs::directory_entry& entry : entries)
        if (files::TextOf(entry.path().filename()).ends_with(ending))
            records.push_back(entry.path());
    std::sort(records.begin(), records.end());
    return records;
}

void RemoveRecord(const fs::path& file) {
    Guarded([&] { files::RemoveFile(file); });
}

} // namespace qx::host
