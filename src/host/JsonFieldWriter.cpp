#include "host/JsonFieldWriter.h"

#include "host/Variables.h"

#include <utility>

namespace qx::host {

JsonFieldWriter::JsonFieldWriter(Json& section) : m_value(&section) {
    section = Json::object();
}

Json& JsonFieldWriter::Place(const Field& field) {
    if (m_value->is_object())
        return (*m_value)[std::string(field.key)];
    return m_value->emplace_back();
}

void JsonFieldWriter::Within(Json& value, const std::function<void()>& walk) {
    Json* outer = std::exchange(m_value, &value);
    walk();
    m_value = outer;
}

bool JsonFieldWriter::Flag(const Field& field, bool fValue) {
    Place(field) = fValue;
    return fValue;
}

Integer JsonFieldWriter::Number(const Field& field, Integer nValue, Integer /*nMin*/,
                                Integer /*nMax*/) {
    Place(field) = nValue;
    return nValue;
}

std::vector<Integer> JsonFieldWriter::Keys(const Field& field, const std::vector<Integer>& keys,
                                           Integer /*nMin*/, Integer /*nMax*/,
                                           const PositionCodeOf& /*positionCodeOf*/) {
    Place(field) = Json(keys);
    return keys;
}

std::string JsonFieldWriter::Text(const Field& field, const std::string& sValue,
                                  std::size_t /*maxUnits*/) {
    if (field.required || !sValue.empty())
        Place(field) = Variables::Escaped(sValue);
    return sValue;
}

void JsonFieldWriter::Sequence(const Field& field, KeySequence& sequence, Integer /*nSlot*/) {
    if (!field.required && sequence.Length() == 0)
        return;
    Place(field) = sequence.Codes();
}

void JsonFieldWriter::Object(const Field& field, const std::function<void()>& members) {
    Within(Place(field) = Json::object(), members);
}

void JsonFieldWriter::Array(const Field& field, std::size_t count, Integer /*nFirst*/,
                            const std::function<void(const Field&, std::size_t)>& element) {
    Within(Place(field) = Json::array(), [&] {
        for (std::size_t i = 0; i < count; ++i)
            element({"", ""}, i);
    });
}

void JsonFieldWriter::List(const FieldList& list) {
    Json& elements = Place(list.field) = Json::array();
    for (const FieldList::Id& id : list.present) {
        Json& element = elements.emplace_back(Json::object());
        for (std::size_t k = 0; k < id.size(); ++k)
            element[std::string(list.keyMembers[k].key)] = id[k];
        Within(element, [&] { list.visit(id); });
    }
}

} // namespace qx::host
