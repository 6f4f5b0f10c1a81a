#include "batch/Report.h"

#include "host/ErrorJson.h"
#include "host/RecordFiles.h"
#include "json/Members.h"

#include <algorithm>

namespace qx::batch {

namespace {

using json::Json;

constexpr host::RecordFormat kReportFormat = {"qx-batch-report", 1};

template <typename AnyUnit, typename Visit>
void VisitMembers(AnyUnit& unit, Visit visit) {
    visit("name", unit.name);
    visit("result", unit.result);
    visit("time", unit.time);
    visit("document", unit.document);
    visit("keyboard", unit.keyboard);
    visit("identifier", unit.identifier);
    visit("bytesSent", unit.bytesSent);
    visit("backup", unit.backup);
    visit("rolledBack", unit.isRolledBack);
    visit("wanted", unit.wanted);
}

} // namespace

std::string_view CodeOf(Result result) {
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

Json ToJson(const UnitReport& unit) {
    Json json = json::MembersToJson([&](auto visit) { VisitMembers(unit, visit); });
    json["error"] = unit.error ? host::ToJson(*unit.error) : Json();
    return json;
}

void Take(const json::Value& value, UnitReport& unit) {
    json::Object members(value);
    json::TakeMembers(members, [&](auto visit) { VisitMembers(unit, visit); });
    const json::Value error = members.Get("error");
    if (unit.result == Result::Failed)
        unit.error = host::ErrorFrom(error);
    else if (error.Exists() && !error.AsJson().is_null())
        error.RefuseAs(json::FaultKind::NotAChoice, "null");
    members.RefuseOthers();
}

std::filesystem::path Report::PathFor(const std::filesystem::path& job) {
    std::filesystem::path report = job;
    return report += ".report.json";
}

Report Report::Load(const std::filesystem::path& file, const std::string& job) {
    Report report;
    report.m_file = file;
    report.m_job = job;
    std::error_code reason;
    if (!std::filesystem::exists(file, reason) && !reason)
        return report;
    try {
        host::ReadRecord(file, kReportFormat, [&](json::Object& record) {
            for (const char* forPeople : {"job", "done", "failed", "notDone"})
                (void)record.Find(forPeople);
            json::Take(record.Get("units"), report.units);
            json::Take(record.Get("formerUnits"), report.formerUnits);
        });
    } catch (const host::Error& error) {
        throw host::Error(host::Cause::ReportDamaged, {.place = error.place}, {error});
    }
    return report;
}

void Report::Save() const {
    host::WriteRecord(m_file, kReportFormat, ToJson());
}

void Report::SetUnits(const std::vector<std::string>& names) {
    std::vector<UnitReport> known = std::move(units);
    known.insert(known.end(), formerUnits.begin(), formerUnits.end());
    units.clear();
    for (const std::string& name : names) {
        const auto found = std::find_if(known.begin(), known.end(),
                                        [&](const UnitReport& unit) { return unit.name == name; });
        units.emplace_back();
        if (found != known.end()) {
            units.back() = *found;
            known.erase(found);
        }
        units.back().name = name;
    }
    std::erase_if(known, [](const UnitReport& unit) { return unit.time.empty(); });
    formerUnits = std::move(known);
}

std::size_t Report::Count(Result result) const {
    return static_cast<std::size_t>(std::count_if(
        units.begin(), units.end(), [&](const UnitReport& u) { return u.result == result; }));
}

Json Report::ToJson() const {
    return {{"job", m_job},
            {"done", Count(Result::Done)},
            {"failed", Count(Result::Failed)},
            {"notDone", Count(Result::NotDone)},
            {"units", json::ToJson(units)},
            {"formerUnits", json::ToJson(formerUnits)}};
}

} // namespace qx::batch
