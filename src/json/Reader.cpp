#include "json/Reader.h"

namespace qx::json {

std::optional<std::string> Value::Text() const {
    if (!Exists())
        return std::nullopt;
    if (m_json->is_string())
        return m_json->get<std::string>();
    RefuseAs(FaultKind::NotAText);
    return std::nullopt;
}

std::optional<bool> Value::Flag() const {
    if (!Exists())
        return std::nullopt;
    if (m_json->is_boolean())
        return m_json->get<bool>();
    RefuseAs(FaultKind::NotAFlag);
    return std::nullopt;
}

std::optional<std::int64_t> Value::NumberWithin(std::int64_t lowest, std::int64_t highest,
                                                FaultKind kind) const {
    if (!Exists())
        return std::nullopt;
    const bool fits = m_json->is_number_unsigned()
                          ? std::in_range<std::int64_t>(m_json->get<std::uint64_t>())
                          : m_json->is_number_integer();
    const std::int64_t number = fits ? m_json->get<std::int64_t>() : 0;
    if (fits && number >= lowest && number <= highest)
        return number;
    RefuseAs(kind, lowest, highest);
    return std::nullopt;
}

bool Value::IsList() const {
    if (Exists() && !m_json->is_array())
        RefuseAs(FaultKind::NotAList);
    return Exists() && m_json->is_array();
}

std::vector<Value> Value::Elements() const {
    std::vector<Value> elements;
    if (IsList())
        for (const Json& element : *m_json)
            elements.emplace_back(element, JsonPointer(m_place, std::to_string(elements.size())),
                                  *m_faults);
    return elements;
}

std::vector<Value> Value::Elements(std::size_t count) const {
    if (!Exists() || (m_json->is_array() && m_json->size() == count))
        return Elements();
    RefuseAs(FaultKind::NotAListOf, count);
    return {};
}

void Value::Refuse(Fault fault) const {
    fault.place = Shortened(m_place);
    m_faults->Add(std::move(fault));
}

Object::Object(Value value)
    : m_value(std::move(value)), m_isObject(m_value.Exists() && m_value.AsJson().is_object()) {
    if (m_value.Exists() && !m_isObject)
        m_value.RefuseAs(FaultKind::NotAnObject);
}

Value Object::Get(std::string_view key) {
    Value member = Find(key);
    if (m_isObject && !member.Exists())
        m_value.Refuse(FaultKind::MissingMember, key);
    return member;
}

Value Object::Find(std::string_view key) {
    m_asked.emplace(key);
    const std::string place = JsonPointer(m_value.Place(), key);
    if (m_isObject)
        if (const auto found = m_value.AsJson().find(std::string(key));
            found != m_value.AsJson().end())
            return {*found, place, m_value.AllFaults()};
    return {place, m_value.AllFaults()};
}

std::vector<std::pair<std::string, Value>> Object::All() {
    std::vector<std::pair<std::string, Value>> members;
    if (m_isObject)
        for (const auto& [key, value] : m_value.AsJson().items())
            members.emplace_back(key, Find(key));
    return members;
}

void Object::RefuseOthers() const {
    if (!m_isObject)
        return;
    for (const auto& [key, value] : m_value.AsJson().items())
        if (!m_asked.contains(key))
            m_value.AllFaults().Add(
                {JsonPointer(m_value.Place(), key), FaultKind::UnknownMember, ShortText(key)});
}

bool HasFormat(Object& file, std::string_view format, int version) {
    const Value name = file.Find("format");
    if (!file.IsObject())
        return false;
    if (!name.Exists() || name.AsJson() != format) {
        name.Refuse(FaultKind::OtherFormat, format);
        return false;
    }
    const Value number = file.Get("version");
    const bool isKnown =
        number.Exists() && number.AsJson().is_number_integer() && number.AsJson() == version;
    if (number.Exists() && !isKnown)
        number.RefuseAs(FaultKind::UnknownVersion, version);
    return isKnown;
}

} // namespace qx::json
