#include "host/ConfigurationDocument.h"

#include "files/Files.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "host/KeyboardContent.h"

namespace qx::host {

namespace {

[[noreturn]] void Refuse(const std::string& name, const std::string& place,
                         const std::string& message) {
    throw Error(Cause::DocumentFaults,
                {.place = {.file = name, .pointer = place}, .faults = {Fault{place, message}}});
}

} // namespace

ConfigurationDocument::ConfigurationDocument()
    : m_json({{"format", kFormat}, {"version", kVersion}}), m_name("the document") {}

ConfigurationDocument ConfigurationDocument::Parse(std::string_view text, const std::string& name) {
    ConfigurationDocument document;
    document.m_name = name;
    if (text.size() > kMostBytes)
        Refuse(name, "", "more than " + std::to_string(kMostBytes) + " bytes");
    try {
        document.m_json = ParseStrictly(text);
    } catch (const JsonError& error) {
        Refuse(name, error.Place(), error.what());
    }
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
               "version " + ShortText(*version) + " is not known; this program reads version " +
                   std::to_string(kVersion));
    return document;
}

ConfigurationDocument ConfigurationDocument::Load(const std::filesystem::path& path) {
    std::string text;
    try {
        text = files::ReadFile(path, kMostBytes);
    } catch (const std::exception& error) {
        throw FileError(error);
    }
    return Parse(text, files::TextOf(path));
}

const Json* ConfigurationDocument::Find(std::string_view key) const {
    const auto found = m_json.find(std::string(key));
    return found == m_json.end() ? nullptr : &*found;
}

Json& ConfigurationDocument::Place(std::string_view key) {
    return m_json[std::string(key)];
}

std::string ConfigurationDocument::Identifier() const {
    const Json::json_pointer place(kIdentifierPlace);
    if (!m_json.contains(place) || !m_json[place].is_string())
        return {};
    const auto text = m_json[place].get<std::string>();
    const auto guid = GuidFromText(text);
    return guid && !IsIdentifier(*guid) ? std::string() : text;
}

void ConfigurationDocument::RemoveIdentifier() {
    const Json::json_pointer place(kIdentifierPlace);
    if (m_json.contains(place))
        m_json[place.parent_pointer()].erase(place.back());
}

} // namespace qx::host
