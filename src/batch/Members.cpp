#include "batch/Members.h"

namespace qx::batch {

using host::Json;
using host::ShortText;

Members::Members(const Json& value, std::string place, std::vector<host::Fault>& faults)
    : m_value(value), m_place(std::move(place)), m_faults(faults) {
    if (!value.is_object())
        AddFault("", ShortText(value) + " is not an object");
}

const Json* Members::Find(const std::string& key) {
    m_asked.insert(key);
    if (!m_value.is_object())
        return nullptr;
    const auto found = m_value.find(key);
    return found == m_value.end() ? nullptr : &*found;
}

std::string Members::Text(const std::string& key, bool fRequired) {
    const Json* value = Find(key);
    if (value == nullptr && fRequired && m_value.is_object())
        AddFault("", "\"" + key + "\" is missing");
    if (value == nullptr)
        return {};
    if (!value->is_string() || value->get<std::string>().empty() ||
        value->get<std::string>().find('\0') != std::string::npos) {
        AddFault(key, ShortText(*value) + " is not a text, or is empty");
        return {};
    }
    return value->get<std::string>();
}

host::Variables::Values Members::Variables() {
    host::Variables::Values values;
    const Json* object = Find("variables");
    if (object == nullptr)
        return values;
    Members members(*object, Place("variables"), m_faults);
    if (!object->is_object())
        return values;
    for (const auto& [name, value] : object->items()) {
        if (!host::Variables::IsName(name))
            members.AddFault(name, "a variable's name is a letter, and then letters, digits, "
                                   "hyphens and underscores");
        else if (!value.is_string() || value.get<std::string>().find('\0') != std::string::npos)
            members.AddFault(name, ShortText(value) + " is not a text: write \"42\"");
        else
            values[name] = value.get<std::string>();
    }
    return values;
}

void Members::RefuseOthers() {
    if (m_value.is_object())
        for (const auto& [key, value] : m_value.items())
            if (!m_asked.contains(key))
                AddFault(key, "unknown member " + ShortText(key));
}

std::string Members::Place(const std::string& key) const {
    return key.empty() ? m_place : host::JsonPointer(m_place, key);
}

void Members::AddFault(const std::string& key, const std::string& message) {
    m_faults.push_back({Place(key), message});
}

} // namespace qx::batch
