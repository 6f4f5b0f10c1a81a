#include "host/Schemas.h"

#include "host/DocumentSchema.h"
#include "host/Error.h"
#include "host/SchemaTexts.h"

#include <map>

namespace qx::host {

namespace {

constexpr std::string_view kReference = "#/$defs/";

constexpr const char* kDialect = "https://json-schema.org/draft/2020-12/schema";

template <typename Enum>
Json Codes(Enum first = {}) {
    Json codes = Json::array();
    for (int i = static_cast<int>(first); i <= static_cast<int>(LastOf(first)); ++i)
        codes.push_back(CodeOf(static_cast<Enum>(i)));
    return {{"enum", std::move(codes)}};
}

// Each kind of error: its code, and its causes.
Json ErrorKinds() {
    std::map<ErrorKind, Json> causes;
    for (int i = 0; i <= static_cast<int>(LastOf(Cause())); ++i)
        causes[KindOf(static_cast<Cause>(i))].push_back(CodeOf(static_cast<Cause>(i)));
    Json kinds = Json::array();
    for (auto& [kind, ofKind] : causes) {
        kinds.push_back(
            {{"properties",
              {{"code", {{"const", CodeOf(kind)}}}, {"cause", {{"enum", std::move(ofKind)}}}}}});
    }
    return kinds;
}

Json ErrorCodes(const Json& kinds) {
    Json codes = Json::array();
    for (const Json& kind : kinds)
        codes.push_back(kind["properties"]["code"]["const"]);
    return {{"enum", std::move(codes)}};
}

Json AllDefinitions() {
    Json all = Json::object();
    for (const char* const text : kSchemaTexts)
        all.update(Json::parse(text));
    Json document = DocumentSchema();
    all.update(document["$defs"]);
    document.erase("$defs");
    all["keyboard"] = document["properties"]["keyboard"];
    all["document"] = std::move(document);
    Json kinds = ErrorKinds();
    all["errorCode"] = ErrorCodes(kinds);
    all["error"]["anyOf"] = std::move(kinds);
    all["holds"] = Codes<Holds>();
    all["suggestion"] = Codes(Suggestion::Recover);
    all["faultCode"] = Codes<FaultKind>();
    all["deed"] = Codes<files::Deed>();
    all["obstacle"] = Codes<files::Obstacle>();
    all["keyboardFileKind"] = Codes<KeyboardFile>();
    all["writeAction"] = Codes<WriteAction>();
    all["writeResult"] = Codes<WriteResult>();
    return all;
}

// Adds the definitions that the schema refers to, and those that they refer to.
void AddUsed(const Json& schema, const Json& all, Json& used) {
    if (schema.is_object())
        if (const auto reference = schema.find("$ref");
            reference != schema.end() && reference->is_string()) {
            const auto name = reference->get<std::string>().substr(kReference.size());
            if (!used.contains(name)) {
                used[name] = all.at(name);
                AddUsed(all.at(name), all, used);
            }
        }
    for (const Json& member : schema)
        if (member.is_structured())
            AddUsed(member, all, used);
}

} // namespace

const std::vector<std::string>& SchemaNames() {
    static const std::vector<std::string> names = {"document", "result",  "error",  "job",
                                                   "report",   "journal", "backup", "receipt"};
    return names;
}

Json Schema(std::string_view name) {
    const Json all = AllDefinitions();
    const Json& own = all.at(std::string(name));
    Json used = Json::object();
    AddUsed(own, all, used);
    Json schema = {{"$schema", kDialect}};
    schema.update(own);
    schema["$defs"] = std::move(used);
    return schema;
}

} // namespace qx::host
