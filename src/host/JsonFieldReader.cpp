#include "host/JsonFieldReader.h"

#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "qxcontrols/keys/TypedText.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx::host {

namespace {

std::string RangeText(Integer nMin, Integer nMax) {
    return std::to_string(nMin) + " to " + std::to_string(nMax);
}

// As many blanks as the text has characters: in front of what stands behind it, they keep the
// places that messages name.
std::string BlanksFor(std::string_view text) {
    std::string blanks;
    for (; !text.empty(); SkipCharacters(text, 1))
        blanks += ' ';
    return blanks;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

} // namespace

JsonFieldReader::JsonFieldReader(const Json& section, std::string place,
                                 const QXKeyboardLayoutData* layout, Variables& variables,
                                 std::vector<Fault>& faults)
    : m_layout(layout), m_variables(variables),
      m_faults(faults), m_level{&section, std::move(place), {}} {}

void JsonFieldReader::Read(const std::function<void(FieldVisitor&)>& walk) {
    const Level whole = m_level;
    ReadObject(*whole.value, whole.place, [&] { walk(*this); });
}

void JsonFieldReader::AddFault(const std::string& place, const std::string& message) {
    if (m_faults.size() == kMostFaults)
        m_faults.push_back({"", "there are more faults than are reported"});
    if (HasEnoughFaults())
        return;
    m_faults.emplace_back(place, message);
}

std::string JsonFieldReader::PlaceOf(std::string_view key) const {
    return JsonPointer(m_level.place, key);
}

const Json* JsonFieldReader::Find(const Field& field) {
    if (m_level.value->is_array())
        return &(*m_level.value)[std::stoul(std::string(field.key))];
    m_level.asked.emplace(field.key);
    const auto found = m_level.value->find(std::string(field.key));
    if (found != m_level.value->end())
        return &*found;
    if (field.required)
        AddFault(m_level.place, "\"" + std::string(field.key) + "\" is missing");
    return nullptr;
}

void JsonFieldReader::Within(const Json& value, const std::string& place,
                             const std::function<void()>& walk) {
    Level outer = std::exchange(m_level, {&value, place, {}});
    walk();
    m_level = std::move(outer);
}

void JsonFieldReader::ReadObject(const Json& value, const std::string& place,
                                 const std::function<void()>& members) {
    if (!value.is_object()) {
        AddFault(place, ShortText(value) + " is not an object");
        return;
    }
    Within(value, place, [&] {
        members();
        for (const auto& [key, member] : value.items())
            if (!m_level.asked.contains(key))
                AddFault(PlaceOf(key), "unknown member " + ShortText(key));
    });
}

Json JsonFieldReader::Filled(const Json& value, const std::string& place) {
    if (!value.is_string())
        return value;
    Json filled(Json::value_t::discarded);
    try {
        const auto pieces = m_variables.Split(value.get<std::string>());
        if (pieces.size() != 1 || !pieces.front().isValue)
            return value;
        filled = Json::parse(pieces.front().text, nullptr, false);
        if (filled.is_discarded())
            filled = pieces.front().text;
    } catch (const std::invalid_argument& error) {
        AddFault(place, error.what());
    }
    return filled;
}

bool JsonFieldReader::Flag(const Field& field, bool fValue) {
    const Json* value = Find(field);
    if (value == nullptr)
        return fValue;
    const Json filled = Filled(*value, PlaceOf(field.key));
    if (filled.is_boolean())
        return filled.get<bool>();
    if (filled.is_discarded())
        return fValue;
    AddFault(PlaceOf(field.key), ShortText(filled) + " is neither true nor false");
    return fValue;
}

std::optional<Integer> JsonFieldReader::WholeNumber(const Json& value, const std::string& place,
                                                    Integer nMin, Integer nMax,
                                                    std::string_view sKind) {
    const bool isInRange = value.is_number_unsigned()
                               ? value.get<std::uint64_t>() <=
                                         static_cast<std::uint64_t>(std::max<Integer>(nMax, 0)) &&
                                     static_cast<std::int64_t>(value.get<std::uint64_t>()) >= nMin
                               : value.is_number_integer() && value.get<std::int64_t>() >= nMin &&
                                     value.get<std::int64_t>() <= nMax;
    if (isInRange)
        return static_cast<Integer>(value.get<std::int64_t>());
    AddFault(place, ShortText(value) + " is not a " + std::string(sKind) + " from " +
                        RangeText(nMin, nMax));
    return std::nullopt;
}

Integer JsonFieldReader::Number(const Field& field, Integer nValue, Integer nMin, Integer nMax) {
    const Json* value = Find(field);
    if (value == nullptr)
        return nValue;
    const std::string place = PlaceOf(field.key);
    const Json filled = Filled(*value, place);
    if (filled.is_discarded())
        return nValue;
    return WholeNumber(filled, place, nMin, nMax, "whole number").value_or(nValue);
}

std::vector<Integer> JsonFieldReader::Keys(const Field& field, const std::vector<Integer>& keys,
                                           Integer nMin, Integer nMax,
                                           const PositionCodeOf& /*positionCodeOf*/) {
    const Json* value = Find(field);
    if (value == nullptr)
        return keys;
    const std::string place = PlaceOf(field.key);
    if (!value->is_array()) {
        AddFault(place, ShortText(*value) + " is not a list of keys");
        return keys;
    }
    std::vector<Integer> numbers;
    for (std::size_t i = 0; i < value->size(); ++i)
        if (const auto number = WholeNumber((*value)[i], JsonPointer(place, std::to_string(i)),
                                            nMin, nMax, "whole number"))
            numbers.push_back(*number);
    return numbers;
}

std::string JsonFieldReader::Text(const Field& field, const std::string& sValue,
                                  std::size_t maxUnits) {
    const Json* value = Find(field);
    if (value == nullptr)
        return sValue;
    if (!value->is_string()) {
        AddFault(PlaceOf(field.key), ShortText(*value) + " is not a text");
        return sValue;
    }
    std::string text;
    try {
        text = m_variables.Fill(value->get<std::string>());
    } catch (const std::invalid_argument& error) {
        AddFault(PlaceOf(field.key), error.what());
        return sValue;
    }
    const std::size_t units = Utf16FromUtf8(text).size();
    if (units > maxUnits) {
        AddFault(PlaceOf(field.key), "the text has " + std::to_string(units) +
                                         " UTF-16 units, more than the " +
                                         std::to_string(maxUnits) + " that fit");
        return sValue;
    }
    if (text.find('\0') != std::string::npos) {
        AddFault(PlaceOf(field.key), "the text holds a character of code 0, which would end it");
        return sValue;
    }
    return text;
}

std::vector<Byte> JsonFieldReader::CodesOf(std::string_view text) const {
    const auto pieces = m_variables.Split(text);
    const auto isApart = [&](std::size_t i) {
        return (i == 0 || pieces[i - 1].isValue || IsBlank(text[pieces[i].begin - 1])) &&
               (i + 1 == pieces.size() || pieces[i + 1].isValue || IsBlank(text[pieces[i].end]));
    };
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (pieces[i].isValue && !isApart(i))
            throw std::invalid_argument(
                std::string(text.substr(pieces[i].begin, pieces[i].end - pieces[i].begin)) +
                " is an item of its own, with blanks around it");
    std::vector<Byte> codes;
    for (const Variables::Piece& piece : pieces) {
        const auto more =
            piece.isValue
                ? CodesThatType(piece.text, *m_layout)
                : ParseSequenceText(BlanksFor(text.substr(0, piece.begin)) + piece.text, *m_layout);
        codes.insert(codes.end(), more.begin(), more.end());
    }
    if (std::find(codes.begin(), codes.end(), Byte{0}) != codes.end())
        throw std::invalid_argument("{0} would end the sequence in the keyboard");
    return codes;
}

std::optional<std::vector<Byte>> JsonFieldReader::ReadCodes(const Json& value,
                                                            const std::string& place) {
    std::vector<Byte> codes;
    if (value.is_string()) {
        try {
            if (m_layout != nullptr)
                return CodesOf(value.get<std::string>());
            AddFault(place, "a sequence as text needs a keyboard layout");
        } catch (const std::exception& error) {
            AddFault(place, error.what());
        }
        return std::nullopt;
    }
    if (!value.is_array()) {
        AddFault(place, ShortText(value) + " is neither a list of key codes nor a text");
        return std::nullopt;
    }
    const std::size_t faultsBefore = m_faults.size();
    for (std::size_t i = 0; i < value.size(); ++i)
        codes.push_back(static_cast<Byte>(
            WholeNumber(value[i], JsonPointer(place, std::to_string(i)), 1, 255, "code")
                .value_or(0)));
    return m_faults.size() == faultsBefore ? std::optional(codes) : std::nullopt;
}

void JsonFieldReader::Sequence(const Field& field, KeySequence& sequence, Integer nSlot) {
    const Json* value = Find(field);
    if (value == nullptr)
        return;
    const std::string place = PlaceOf(field.key);
    const auto codes = ReadCodes(*value, place);
    if (!codes)
        return;
    if (codes->size() > static_cast<std::size_t>(nSlot)) {
        AddFault(place, "the sequence has " + std::to_string(codes->size()) +
                            " codes, more than the " + std::to_string(nSlot) + " that fit");
        return;
    }
    sequence.Clear();
    for (const Byte code : *codes)
        sequence.AddByte(code);
}

void JsonFieldReader::Object(const Field& field, const std::function<void()>& members) {
    if (const Json* value = Find(field))
        ReadObject(*value, PlaceOf(field.key), members);
}

void JsonFieldReader::Array(const Field& field, std::size_t count, Integer /*nFirst*/,
                            const std::function<void(const Field&, std::size_t)>& element) {
    const Json* value = Find(field);
    if (value == nullptr)
        return;
    const std::string place = PlaceOf(field.key);
    if (!value->is_array() || value->size() != count) {
        AddFault(place,
                 ShortText(*value) + " is not a list of " + std::to_string(count) + " elements");
        return;
    }
    Within(*value, place, [&] {
        for (std::size_t i = 0; i < count; ++i) {
            const std::string index = std::to_string(i);
            element({index, ""}, i);
        }
    });
}

std::optional<FieldList::Id> JsonFieldReader::ReadId(const FieldList& list,
                                                     const std::string& place) {
    FieldList::Id id;
    for (const FieldList::KeyMember& member : list.keyMembers) {
        const Json* value = Find({member.key, ""});
        const auto number = value == nullptr ? std::nullopt
                                             : WholeNumber(*value, JsonPointer(place, member.key),
                                                           member.min, member.max, "whole number");
        if (number)
            id.push_back(*number);
    }
    return id.size() == list.keyMembers.size() ? std::optional(id) : std::nullopt;
}

void JsonFieldReader::List(const FieldList& list) {
    const Json* value = Find(list.field);
    if (value == nullptr)
        return;
    const std::string place = PlaceOf(list.field.key);
    if (!value->is_array()) {
        AddFault(place, ShortText(*value) + " is not a list");
        return;
    }
    list.clear();
    std::set<FieldList::Id> seen;
    for (std::size_t i = 0; i < value->size() && !HasEnoughFaults(); ++i) {
        const std::string elementPlace = JsonPointer(place, std::to_string(i));
        ReadObject((*value)[i], elementPlace, [&] {
            const auto id = ReadId(list, elementPlace);
            if (id && !seen.insert(*id).second)
                AddFault(elementPlace, ElementLabel(list, *id) + " stands in the list twice");
            // Without an identity the members cannot be placed, and are not reported as unknown.
            if (id)
                list.visit(*id);
            else
                for (const auto& [key, member] : m_level.value->items())
                    m_level.asked.insert(key);
        });
    }
}

void JsonFieldReader::Refuse(const Field& field, const std::string& sReason) {
    AddFault(PlaceOf(field.key), sReason);
}

} // namespace qx::host
