#include "host/ErrorJson.h"

#include "host/ErrorText.h"
#include "json/Members.h"

#include <set>

namespace qx::host {

namespace {

using json::Object;
using json::Value;

// The names of settings are constants of the program. These copies stay until it ends: there are
// only as many as there are names in one record.
std::string_view Constant(const std::string& text) {
    static std::set<std::string, std::less<>> copies;
    return *copies.insert(text).first;
}

// The facts that few errors have, where they differ from those of an empty error. The first
// argument of `visit` is the name, the second leads to the fact.
template <typename Visit>
void VisitRareFacts(Visit visit) {
    visit(
        "name", [](auto& facts) -> auto& { return facts.name; });
    visit(
        "other", [](auto& facts) -> auto& { return facts.other; });
    visit(
        "names", [](auto& facts) -> auto& { return facts.names; });
    visit(
        "others", [](auto& facts) -> auto& { return facts.others; });
    visit(
        "setting", [](auto& facts) -> auto& { return facts.setting; });
    visit(
        "reason", [](auto& facts) -> auto& { return facts.reason; });
    visit(
        "problem", [](auto& facts) -> auto& { return facts.problem; });
    visit(
        "count", [](auto& facts) -> auto& { return facts.count; });
    visit(
        "index", [](auto& facts) -> auto& { return facts.index; });
    visit(
        "found", [](auto& facts) -> auto& { return facts.found; });
    visit(
        "expected", [](auto& facts) -> auto& { return facts.expected; });
    visit(
        "simulated", [](auto& facts) -> auto& { return facts.isSimulated; });
    visit(
        "keyboardFile", [](auto& facts) -> auto& { return facts.keyboardFile; });
}

template <typename AnyWrite, typename Visit>
void VisitMembers(AnyWrite& write, Visit visit) {
    visit("id", write.id);
    visit("action", write.action);
    visit("document", write.document);
    visit("unit", write.unit);
    visit("time", write.time);
}

using json::Take;
using json::ToJson;

std::vector<WriteName> WritesFrom(const Value& value) {
    std::vector<WriteName> writes;
    for (const Value& element : value.Elements()) {
        Object members(element);
        json::TakeMembers(members, [&](auto visit) { VisitMembers(writes.emplace_back(), visit); });
        members.RefuseOthers();
    }
    return writes;
}

template <typename AnyProblem, typename Visit>
void VisitProblem(AnyProblem& problem, Visit visit) {
    visit("deed", problem.deed);
    visit("subject", problem.subject);
    visit("obstacle", problem.obstacle);
    visit("names", problem.names);
    visit("number", problem.number);
    visit("system", problem.system);
}
Json ToJson(const files::Problem& problem) {
    return json::MembersToJson([&](auto visit) { VisitProblem(problem, visit); });
}
void Take(const Value& value, files::Problem& problem) {
    Object members(value);
    json::TakeMembers(members, [&](auto visit) { VisitProblem(problem, visit); });
    members.RefuseOthers();
}

Json ToJson(const SettingName& setting) {
    Json parts = Json::array();
    for (const NamePart& part : setting.parts)
        parts.push_back({{"key", part.key}, {"label", part.label}, {"number", part.number}});
    return {{"section", setting.section},
            {"title", setting.title},
            {"parts", std::move(parts)},
            {"elementParts", setting.elementParts}};
}
void TakeConstant(const Value& value, std::string_view& variable) {
    if (const auto text = value.Text())
        variable = Constant(*text);
}
void Take(const Value& value, SettingName& setting) {
    Object members(value);
    TakeConstant(members.Get("section"), setting.section);
    TakeConstant(members.Get("title"), setting.title);
    for (const Value& element : members.Get("parts").Elements()) {
        Object part(element);
        NamePart& read = setting.parts.emplace_back();
        TakeConstant(part.Get("key"), read.key);
        TakeConstant(part.Get("label"), read.label);
        Take(part.Get("number"), read.number);
        part.RefuseOthers();
    }
    if (const auto count = members.Get("elementParts")
                               .WholeNumber<Long>(0, static_cast<Long>(setting.parts.size())))
        setting.elementParts = static_cast<std::size_t>(*count);
    members.RefuseOthers();
}

Json OrNull(std::string_view text) {
    return text.empty() ? Json() : Json(text);
}

void TakeUnlessNull(const Value& value, std::string& text) {
    if (value.Exists() && !value.AsJson().is_null())
        Take(value, text);
}

Json RareFacts(const Error& error) {
    Json json = Json::object();
    const ErrorFacts none;
    const ErrorFacts& facts = error;
    VisitRareFacts([&](const char* name, auto member) {
        if (!(member(facts) == member(none)))
            json[name] = ToJson(member(facts));
    });
    return json;
}

void TakeRareFacts(const Value& value, ErrorFacts& facts) {
    Object members(value);
    VisitRareFacts([&](const char* name, auto member) {
        if (const Value fact = members.Find(name); fact.Exists())
            Take(fact, member(facts));
    });
    members.RefuseOthers();
}

void TakeUsualFacts(Object& members, ErrorFacts& facts) {
    TakeUnlessNull(members.Get("place"), facts.place.pointer);
    TakeUnlessNull(members.Get("file"), facts.place.file);
    TakeUnlessNull(members.Get("section"), facts.place.section);
    Take(members.Get("address"), facts.place.address);
    std::optional<Long> status;
    const Value function = members.Get("function");
    Take(members.Get("status"), status);
    const Value meaning = members.Get("meaning");
    if (status) {
        FailedCall& call = facts.call.emplace();
        call.status = *status;
        TakeUnlessNull(function, call.function);
        TakeUnlessNull(meaning, call.meaning);
    }
    Take(members.Get("holds"), facts.holds);
    TakeUnlessNull(members.Get("backup"), facts.backup);
}

} // namespace

Json ToJson(const std::vector<Error>& errors) {
    Json json = Json::array();
    for (const Error& error : errors)
        json.push_back(ToJson(error));
    return json;
}

Json ToJson(const Error& error) {
    const bool isWhole = !error.faults.empty(); // a fault of the whole file has an empty place
    Json members = {{"code", CodeOf(error.Kind())},
                    {"cause", CodeOf(error.Why())},
                    {"message", TextOf(error)},
                    {"place", isWhole ? Json(error.place.pointer) : OrNull(error.place.pointer)},
                    {"file", OrNull(error.place.file)},
                    {"section", OrNull(error.place.section)},
                    {"address", ToJson(error.place.address)},
                    {"function", OrNull(error.call ? error.call->function : "")},
                    {"status", ToJson(error.Status())},
                    {"meaning", OrNull(error.call ? error.call->meaning : "")},
                    {"holds", OrNull(error.holds ? CodeOf(*error.holds) : "")},
                    {"backup", OrNull(error.backup)},
                    {"suggestion", OrNull(CodeOf(error.suggestion))}};
    if (Json facts = RareFacts(error); !facts.empty())
        members["facts"] = std::move(facts);
    for (const WriteName& write : error.writes)
        members["writes"].push_back(
            json::MembersToJson([&](auto visit) { VisitMembers(write, visit); }));
    for (const Fault& fault : error.faults)
        members["faults"].push_back(ToJson(fault));
    if (!error.related.empty())
        members["related"] = ToJson(error.related);
    return members;
}

std::optional<Error> ErrorFrom(const Value& value) {
    const std::size_t before = value.AllFaults().Count();
    Object members(value);
    Cause cause = Cause::Unforeseen;
    ErrorFacts facts;
    std::string suggestion;
    for (const char* const derived : {"code", "message"})
        (void)members.Find(derived);
    Take(members.Get("cause"), cause);
    TakeUsualFacts(members, facts);
    Suggestion suggested = Suggestion::None;
    if (const Value code = members.Get("suggestion"); code.Exists() && !code.AsJson().is_null())
        Take(code, suggested);
    if (const Value rare = members.Find("facts"); rare.Exists())
        TakeRareFacts(rare, facts);
    if (const Value writes = members.Find("writes"); writes.Exists())
        facts.writes = WritesFrom(writes);
    if (const Value faults = members.Find("faults"); faults.Exists())
        for (const Value& element : faults.Elements())
            facts.faults.push_back(json::FaultFrom(element));
    std::vector<Error> related;
    if (const Value errors = members.Find("related"); errors.Exists())
        related = ErrorsFrom(errors);
    members.RefuseOthers();
    if (value.AllFaults().Count() != before)
        return std::nullopt;
    Error error(cause, std::move(facts), std::move(related));
    error.suggestion = suggested;
    return error;
}

std::vector<Error> ErrorsFrom(const Value& value) {
    std::vector<Error> errors;
    for (const Value& element : value.Elements())
        if (auto error = ErrorFrom(element))
            errors.push_back(std::move(*error));
    return errors;
}

} // namespace qx::host
