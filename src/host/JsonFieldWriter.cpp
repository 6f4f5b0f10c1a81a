#include "host/JsonFieldWriter.h"

#include "host/Variables.h"
#include "qxcontrols/common/Utf.h"

#include <algorithm>
#include <utility>

namespace qx::host {

namespace {

// The text cut to this many UTF-16 units, as on its way into the keyboard: before the first
// character 0, and never within a character.
std::string Cut(const std::string& sText, std::size_t maxUnits) {
    std::u16string units = Utf16FromUtf8(sText);
    units.erase(std::find(units.begin(), units.end(), u'\0'), units.end());
    if (units.size() > maxUnits)
        units.resize(IsHighSurrogate(units[maxUnits - 1]) ? maxUnits - 1 : maxUnits);
    return Utf8FromUtf16(units);
}

} // namespace

JsonFieldWriter::JsonFieldWriter(Json& section, std::string place, std::vector<Loss>& losses)
    : m_value(&section), m_place(std::move(place)), m_losses(losses) {
    section = Json::object();
}

Json& JsonFieldWriter::Place(const Field& field) {
    if (m_value->is_object())
        return (*m_value)[std::string(field.key)];
    return m_value->emplace_back();
}

std::string JsonFieldWriter::LastPlace(const Field& field) const {
    return JsonPointer(m_place, m_value->is_object() ? std::string(field.key)
                                                     : std::to_string(m_value->size() - 1));
}

void JsonFieldWriter::NoteLoss(const Field& field, Loss::Kind kind) {
    m_losses.push_back({kind, LastPlace(field)});
}

void JsonFieldWriter::Within(Json& value, std::string place, const std::function<void()>& walk) {
    Json* outer = std::exchange(m_value, &value);
    std::swap(m_place, place);
    walk();
    std::swap(m_place, place);
    m_value = outer;
}

bool JsonFieldWriter::Flag(const Field& field, bool fValue) {
    Place(field) = fValue;
    return fValue;
}

Integer JsonFieldWriter::Number(const Field& field, Integer nValue, Integer nMin, Integer nMax) {
    const Integer written = std::clamp(nValue, nMin, nMax);
    Place(field) = written;
    if (written != nValue)
        NoteLoss(field, Loss::Kind::NumberLimited);
    return nValue;
}

std::vector<Integer> JsonFieldWriter::Keys(const Field& field, const std::vector<Integer>& keys,
                                           Integer /*nMin*/, Integer /*nMax*/,
                                           const PositionCodeOf& /*positionCodeOf*/) {
    Place(field) = Json(keys);
    return keys;
}

std::string JsonFieldWriter::Text(const Field& field, const std::string& sValue,
                                  std::size_t maxUnits) {
    if (!field.required && sValue.empty())
        return sValue;
    const std::string written = Cut(sValue, maxUnits);
    Place(field) = Variables::Escaped(written);
    if (written != sValue)
        NoteLoss(field, Loss::Kind::TextCut);
    return sValue;
}

void JsonFieldWriter::Sequence(const Field& field, KeySequence& sequence, Integer nSlot) {
    if (!field.required && sequence.Length() == 0)
        return;
    std::vector<Integer> codes = sequence.Codes();
    std::erase_if(codes, [](Integer code) { return code < 1 || code > 255; });
    if (codes.size() < static_cast<std::size_t>(sequence.Length()))
        NoteLoss(field, Loss::Kind::CodesLeftOut);
    if (codes.size() > static_cast<std::size_t>(nSlot)) {
        codes.resize(static_cast<std::size_t>(nSlot));
        NoteLoss(field, Loss::Kind::SequenceCut);
    }
    Place(field) = Json(codes);
}

void JsonFieldWriter::Object(const Field& field, const std::function<void()>& members) {
    Json& object = Place(field) = Json::object();
    Within(object, LastPlace(field), members);
}

void JsonFieldWriter::Array(const Field& field, std::size_t count, Integer /*nFirst*/,
                            const std::function<void(const Field&, std::size_t)>& element) {
    Json& array = Place(field) = Json::array();
    Within(array, LastPlace(field), [&] {
        for (std::size_t i = 0; i < count; ++i)
            element({"", ""}, i);
    });
}

void JsonFieldWriter::List(const FieldList& list) {
    if (!list.field.required && list.present.empty())
        return;
    Json& elements = Place(list.field) = Json::array();
    const std::string place = LastPlace(list.field);
    for (const FieldList::Id& id : list.present) {
        Json& element = elements.emplace_back(Json::object());
        for (std::size_t k = 0; k < id.size(); ++k)
            element[std::string(list.keyMembers[k].key)] = id[k];
        Within(element, JsonPointer(place, std::to_string(elements.size() - 1)),
               [&] { list.visit(id); });
    }
}

} // namespace qx::host
