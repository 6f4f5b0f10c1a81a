#include "host/ConfigurationDocument.h"

#include "files/Files.h"
#include "files/Limits.h"
#include "files/SystemTexts.h"
#include "host/Error.h"
#include "host/KeyboardContent.h"
#include "json/Reader.h"

namespace qx::host {

ConfigurationDocument::ConfigurationDocument()
    : m_json({{"format", kFormat}, {"version", kVersion}}), m_name("the document") {}

ConfigurationDocument ConfigurationDocument::Parse(std::string_view text, const std::string& name) {
    ConfigurationDocument document;
    document.m_name = name;
    try {
        document.m_json = ParseStrictly(text, files::kMostOfDocument);
        json::Faults faults;
        json::Object whole(json::Value(document.m_json, "", faults));
        (void)json::HasFormat(whole, kFormat, kVersion);
        faults.ThrowAny();
    } catch (const json::FaultError& error) {
        throw FaultsOf(name, error);
    }
    return document;
}

ConfigurationDocument ConfigurationDocument::Load(const std::filesystem::path& path) {
    std::string text;
    try {
        text = files::ReadFile(path, files::kMostOfDocument);
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
