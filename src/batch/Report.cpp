#include "batch/Report.h"

#include "host/Error.h"
#include "host/RecordFiles.h"

#include <algorithm>

namespace qx::batch {

namespace {

using host::Json;

constexpr host::RecordFormat kFormat = {"qx-batch-report", 1};

constexpr Result kResults[] = {Result::NotDone, Result::Done, Result::Failed};

Json UnitToJson(const UnitReport& unit) {
    Json json = {{"name", unit.name},
                 {"result", NameOf(unit.result)},
                 {"time", unit.time},
                 {"document", unit.document},
                 {"keyboard", unit.keyboard},
                 {"identifier", unit.identifier},
                 {"bytesSent", unit.bytesSent},
                 {"backup", unit.backup},
                 {"rolledBack", unit.isRolledBack},
                 {"wanted", unit.wanted},
                 {"error", nullptr}};
    if (unit.result == Result::Failed)
        json["error"] = {{"code", unit.code}, {"message", unit.message}};
    return json;
}

// Throws std::exception when something is missing or wrong.
UnitReport UnitFromJson(const Json& json) {
    UnitReport unit;
    const auto text = [&](const char* key) { return json.at(key).get<std::string>(); };
    unit.name = text("name");
    const std::string result = text("result");
    const auto* const found = std::find_if(std::begin(kResults), std::end(kResults),
                                           [&](Result each) { return NameOf(each) == result; });
    if (found == std::end(kResults))
        throw std::runtime_error(host::ShortText(result) + " is no result");
    unit.result = *found;
    unit.time = text("time");
    unit.document = text("document");
    unit.keyboard = text("keyboard");
    unit.identifier = text("identifier");
    unit.bytesSent = json.at("bytesSent").get<Long>();
    unit.backup = text("backup");
    unit.isRolledBack = json.at("rolledBack").get<bool>();
    unit.wanted = text("wanted");
    if (unit.result == Result::Failed) {
        unit.code = json.at("error").at("code").get<std::string>();
        unit.message = json.at("error").at("message").get<std::string>();
    }
    return unit;
}

} // namespace

std::string_view NameOf(Result result) {
    switch (result) {
    case Result::NotDone:
        return "not done";
    case Result::Done:
        return "done";
    case Result::Failed:
        return "failed";
    }
    return "";
}

std::filesystem::path Report::PathFor(const std::filesystem::path& job) {
    std::filesystem::path report = job;
    return report.replace_extension(".report.json");
}

Report Report::Load(const std::filesystem::path& file, const std::string& job) {
    Report report;
    report.m_file = file;
    report.m_job = job;
    std::error_code reason;
    if (!std::filesystem::exists(file, reason) && !reason)
        return report;
    try {
        host::ReadRecord(file, kFormat, [&](const Json& record) {
            for (const Json& unit : record.at("units"))
                report.units.push_back(UnitFromJson(unit));
        });
    } catch (const host::Error& error) {
        throw host::Error(error.Kind(), std::string(error.what()) +
                                            "; it tells which keyboards are done: move it away, "
                                            "and all of them are programmed again");
    }
    return report;
}

void Report::Save() const {
    host::WriteRecord(m_file, kFormat, ToJson());
}

const UnitReport* Report::Find(const std::string& name) const {
    const auto found = std::find_if(units.begin(), units.end(),
                                    [&](const UnitReport& unit) { return unit.name == name; });
    return found == units.end() ? nullptr : &*found;
}

std::size_t Report::Count(Result result) const {
    return static_cast<std::size_t>(std::count_if(
        units.begin(), units.end(), [&](const UnitReport& u) { return u.result == result; }));
}

Json Report::ToJson() const {
    Json json = {{"job", m_job},
                 {"done", Count(Result::Done)},
                 {"failed", Count(Result::Failed)},
                 {"notDone", Count(Result::NotDone)},
                 {"units", Json::array()}};
    for (const UnitReport& unit : units)
        json["units"].push_back(UnitToJson(unit));
    return json;
}

} // namespace qx::batch
