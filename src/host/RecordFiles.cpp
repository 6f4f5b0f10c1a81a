#include "host/RecordFiles.h"

#include "files/Files.h"
#include "host/Error.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace qx::host {

namespace {

namespace fs = std::filesystem;

void Guarded(const std::function<void()>& operation) {
    try {
        operation();
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
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

} // namespace

std::string TimeText(Time time) {
    return Formatted(time, "%04d-%02u-%02uT%02d:%02d:%02d.%03dZ");
}

std::string TimeFileName(Time time) {
    return Formatted(time, "%04d%02u%02uT%02d%02d%02d.%03dZ");
}

std::string NewRecordName(const fs::path& folder, Time time, std::string_view ending) {
    Guarded([&] { files::MakeFolder(folder); });
    const std::string start = TimeFileName(time);
    std::error_code ignored;
    std::string name = start;
    for (int number = 2; fs::exists(folder / (name + std::string(ending)), ignored); ++number)
        name = start + "-" + std::to_string(number);
    return name;
}

void WriteRecord(const fs::path& file, const RecordFormat& format, const Json& members) {
    Json record = {{"format", format.name}, {"version", format.version}};
    record.update(members);
    Guarded([&] {
        files::MakeFolder(file.parent_path());
        files::WriteFileAtomically(file, PrettyText(record));
    });
}

void ReadRecord(const fs::path& file, const RecordFormat& format,
                const std::function<void(const Json&)>& read) {
    std::string text;
    Guarded([&] { text = files::ReadFile(file); });
    try {
        const Json record = ParseStrictly(text);
        if (record.at("format").get<std::string>() != format.name)
            throw std::runtime_error("not a file of the format " + std::string(format.name));
        const int version = record.at("version").get<int>();
        if (version < 1 || version > format.version)
            throw std::runtime_error("version " + std::to_string(version) +
                                     " is not known; this program reads up to version " +
                                     std::to_string(format.version));
        read(record);
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed,
                    file.string() + " cannot be used: " + std::string(error.what()));
    }
}

std::vector<fs::path> RecordsIn(const fs::path& folder, std::string_view ending) {
    std::vector<fs::path> records;
    std::error_code reason;
    if (!fs::exists(folder, reason) && !reason)
        return records;
    fs::directory_iterator entries(folder, reason);
    if (reason)
        throw Error(ErrorKind::FileFailed,
                    folder.string() + " cannot be read: " + reason.message());
    for (const fs::directory_entry& entry : entries)
        if (entry.path().filename().string().ends_with(ending))
            records.push_back(entry.path());
    std::sort(records.begin(), records.end());
    return records;
}

void RemoveRecord(const fs::path& file) {
    Guarded([&] { files::RemoveFile(file); });
}

} // namespace qx::host
