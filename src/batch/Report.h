// Report: how far a job has come, in a file beside it.
//
// People and programs read it, and the next run of the job continues from it. It is replaced in one
// step after every attempt with a keyboard.
#pragma once

#include "host/Error.h"
#include "host/Json.h"
#include "qxcontrols/common/Types.h"
#include "json/Reader.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace qx::batch {

enum class Result { NotDone, Done, Failed };
[[nodiscard]] constexpr Result LastOf(Result) {
    return Result::Failed;
}
// "done", "failed", "not done".
[[nodiscard]] std::string_view CodeOf(Result result);

struct UnitReport {
    std::string name;
    Result result = Result::NotDone;
    std::string wanted;               // of the unit, when it was programmed
    std::string time;                 // of the last attempt; empty before
    std::string document;             // its name
    std::string keyboard;             // its name
    std::string identifier;           // of the keyboard, after the write; may be empty
    Long bytesSent = 0;               // 0: there was nothing to write
    std::string backup;               // the id of the one made before
    bool isRolledBack = false;        // a write that had been interrupted was rolled back first
    std::optional<host::Error> error; // why it failed
};

class Report {
public:
    // "tills.json.report.json" for the job "tills.json".
    [[nodiscard]] static std::filesystem::path PathFor(const std::filesystem::path& job);
    // Empty if there is no file. Throws Error(FileFailed) if the file cannot be used.
    [[nodiscard]] static Report Load(const std::filesystem::path& file, const std::string& job);
    // Throws Error(FileFailed).
    void Save() const;

    [[nodiscard]] const std::filesystem::path& File() const { return m_file; }
    // Makes `units` those of these names, in this order: known ones with their record, new ones not
    // done. The records of the others are kept as former ones.
    void SetUnits(const std::vector<std::string>& names);
    [[nodiscard]] std::size_t Count(Result result) const;
    [[nodiscard]] host::Json ToJson() const;

    std::vector<UnitReport> units;       // in the order of the job
    std::vector<UnitReport> formerUnits; // that are no longer in the job

private:
    std::filesystem::path m_file;
    std::string m_job; // its file name
};

// A unit's record as the report has it.
[[nodiscard]] host::Json ToJson(const UnitReport& unit);
void Take(const json::Value& value, UnitReport& unit);

} // namespace qx::batch
