#include "host/ConfigurationDocument.h"

#include "files/Files.h"
#include "host/Error.h"

#include <set>

namespace qx::host {

namespace {

[[noreturn]] void Refuse(const std::string& name, const std::string& place,
                         const std::string& message) {
    throw Error(ErrorKind::DocumentInvalid,
                name + ": " + (place.empty() ? "" : place + ": ") + message,
                {Fault{place, message}});
}

// Reads JSON that names no member twice: of two values nobody could tell which was meant.
Json ParseStrictly(std::string_view text, const std::string& name) {
    std::vector<std::set<std::string>> open;
    std::string twice;
    const auto watch = [&](int, Json::parse_event_t event, Json& parsed) {
        if (event == Json::parse_event_t::object_start)
            open.emplace_back();
        else if (event == Json::parse_event_t::object_end)
            open.pop_back();
        else if (event == Json::parse_event_t::key &&
                 !open.back().insert(parsed.get<std::string>()).second && twice.empty())
            twice = parsed.get<std::string>();
        return true;
    };
    Json json;
    try {
        json = Json::parse(text, watch);
    } catch (const Json::exception& error) { // no JSON, or a number too large
        std::string reason = error.what();
        reason = reason.substr(reason.find("] ") + 2); // the library's own error number
        Refuse(name, "", "not valid JSON: " + reason);
    }
    if (!twice.empty())
        Refuse(name, "", "the member \"" + twice + "\" is given twice");
    return json;
}

} // namespace

ConfigurationDocument::ConfigurationDocument()
    : m_json({{"format", kFormat}, {"version", kVersion}}), m_name("the document") {}

ConfigurationDocument ConfigurationDocument::Parse(std::string_view text, const std::string& name) {
    ConfigurationDocument document;
    document.m_name = name;
    document.m_json = ParseStrictly(text, name);
    const Json& json = document.m_json;
    if (!json.is_object())
        Refuse(name, "", "not a configuration document: an object is expected");
    const Json* format = document.Find("format");
    if (format == nullptr || *format != kFormat)
        Refuse(name, "/format",
               R"(not a configuration document: "format" is not ")" + std::string(kFormat) + '"');
    const Json* version = document.Find("version");
    if (version == nullptr || !version->is_number_integer())
        Refuse(name, "/version", "the version is not a whole number");
    if (*version != kVersion)
        Refuse(name, "/version",
               "version " + version->dump() + " is not known; this program reads version " +
                   std::to_string(kVersion));
    return document;
}

ConfigurationDocument ConfigurationDocument::Load(const std::filesystem::path& path) {
    std::string text;
    try {
        text = files::ReadFile(path);
    } catch (const std::exception& error) {
        throw Error(ErrorKind::FileFailed, error.what());
    }
    return Parse(text, path.string());
}

const Json* ConfigurationDocument::Find(std::string_view key) const {
    const auto found = m_json.find(std::string(key));
    return found == m_json.end() ? nullptr : &*found;
}

Json& ConfigurationDocument::Place(std::string_view key) {
    return m_json[std::string(key)];
}

} // namespace qx::host
