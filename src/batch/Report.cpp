#include "batch/Report.h"

#include "host/RecordFiles.h"

#include <algorithm>

namespace qx::batch {

namespace {

using host::Json;

constexpr host::RecordFormat kFormat = {"qx-batch-report", 1};

constexpr Result kResults[] = {Result::NotDone, Result::Done, Result::Failed};

// Throws std::runtime_error for another type.
template <typename Value>
Value Member(const Json& json, const std::string& place, const char* key) {
    const std::string where = host::JsonPointer(place, key) + ": ";
    if (!json.is_object() || !json.contains(key))
        throw std::runtime_error(where + "is missing");
    const Json& value = json[key];
    if constexpr (std::is_same_v<Value, std::string>) {
        if (!value.is_string())
            throw std::runtime_error(where + host::ShortText(value) + " is not a text");
        return value.get<std::string>();
    } else if constexpr (std::is_same_v<Value, bool>) {
        if (!value.is_boolean())
            throw std::runtime_error(where + host::ShortText(value) + " is neither true nor false");
        return value.get<bool>();
    } else {
        try {
            return host::NumberFromJson<Value>(value);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(where + error.what());
        }
    }
}

Result ResultNamed(const std::string& name, const std::string& place) {
    const auto* const found = std::find_if(std::begin(kResults), std::end(kResults),
                                           [&](Result each) { return NameOf(each) == name; });
    if (found == std::end(kResults))
        throw std::runtime_error(host::JsonPointer(place, "result") + ": " + host::ShortText(name) +
                                 " is not a result");
    return *found;
}

Json UnitsToJson(const std::vector<UnitReport>& units) {
    Json json = Json::array();
    for (const UnitReport& unit : units)
        json.push_back(ToJson(unit));
    return json;
}

std::vector<UnitReport> UnitsFromJson(const Json& record, const std::string& key) {
    if (!record.contains(key) || !record[key].is_array())
        throw std::runtime_error("/" + key + ": is not a list of units");
    std::vector<UnitReport> units;
    const std::string place = host::JsonPointer("", key);
    for (const Json& unit : record[key])
        units.push_back(
            UnitReportFromJson(unit, host::JsonPointer(place, std::to_string(units.size()))));
    return units;
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

Json ToJson(const UnitReport& unit) {
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
        json["error"] = {{"code", unit.code},
                         {"message", unit.message},
                         {"suggestion", host::CodeOf(unit.suggestion)}};
    return json;
}

UnitReport UnitReportFromJson(const Json& json, const std::string& place) {
    const auto text = [&](const char* key) { return Member<std::string>(json, place, key); };
    UnitReport unit;
    unit.name = text("name");
    unit.result = ResultNamed(text("result"), place);
    unit.time = text("time");
    unit.document = text("document");
    unit.keyboard = text("keyboard");
    unit.identifier = text("identifier");
    unit.bytesSent = Member<Long>(json, place, "bytesSent");
    unit.backup = text("backup");
    unit.isRolledBack = Member<bool>(json, place, "rolledBack");
    unit.wanted = text("wanted");
    if (unit.result == Result::Failed) {
        const Json error = json.value("error", Json());
        const std::string inError = host::JsonPointer(place, "error");
        unit.code = Member<std::string>(error, inError, "code");
        unit.message = Member<std::string>(error, inError, "message");
        unit.suggestion = host::SuggestionOf(Member<std::string>(error, inError, "suggestion"));
    }
    return unit;
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
        host::ReadRecord(file, kFormat, [&](const Json& record) {
            report.units = UnitsFromJson(record, "units");
            report.formerUnits = UnitsFromJson(record, "formerUnits");
        });
    } catch (const host::Error& error) {
        throw host::Error(host::Cause::ReportDamaged, {.place = error.place, .related = {error}});
    }
    return report;
}

void Report::Save() const {
    host::WriteRecord(m_file, kFormat, ToJson());
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
            {"units", UnitsToJson(units)},
            {"formerUnits", UnitsToJson(formerUnits)}};
}

} // namespace qx::batch
