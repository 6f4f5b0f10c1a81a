#include "host/JsonFieldReader.h"

#include "files/Limits.h"
#include "qxcontrols/common/Utf.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"
#include "qxcontrols/keys/TypedText.h"

#include <algorithm>
#include <set>
#include <stdexcept>
#include <utility>

namespace qx::host {

namespace {

// As many spaces as the text has characters: prepended to a text, they keep the positions that
// messages report.
std::string BlanksFor(std::string_view text) {
    std::string blanks;
    for (; !text.empty(); SkipCharacters(text, 1))
        blanks += ' ';
    return blanks;
}

// The members of the element that identify it, as they are in the document.
std::string IdText(const FieldList& list, const FieldList::Id& id) {
    std::string text;
    for (std::size_t i = 0; i < id.size(); ++i)
        text += (i == 0 ? "\"" : ", \"") + std::string(list.keyMembers[i].key) +
                "\": " + std::to_string(id[i]);
    return text;
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// A variable's value as the number or switch that it is written as; else the text.
Json NumberOrText(const std::string& text) {
    try {
        return ParseStrictly(text, files::kMostOfDocument);
    } catch (const json::FaultError&) {
        return text;
    }
}

} // namespace

void JsonFieldReader::Read(const json::Value& section,
                           const std::function<void(FieldVisitor&)>& walk) {
    ReadObject(section, [&] { walk(*this); });
}

json::Value JsonFieldReader::Find(const Field& field) {
    if (!m_elements.empty())
        return m_elements[std::stoul(std::string(field.key))];
    return field.required ? m_object->Get(field.key) : m_object->Find(field.key);
}

void JsonFieldReader::ReadObject(const json::Value& value, const std::function<void()>& members) {
    json::Object object(value);
    if (!object.IsObject())
        return;
    json::Object* const outer = std::exchange(m_object, &object);
    std::vector<json::Value> elements = std::exchange(m_elements, {});
    members();
    object.RefuseOthers();
    m_object = outer;
    m_elements = std::move(elements);
}

std::optional<Json> JsonFieldReader::Filled(const json::Value& value) {
    if (!value.Exists())
        return std::nullopt;
    if (!value.AsJson().is_string())
        return value.AsJson();
    try {
        const auto pieces = m_variables.Split(value.AsJson().get<std::string>());
        if (pieces.size() != 1 || !pieces.front().isValue)
            return value.AsJson();
        return NumberOrText(pieces.front().text);
    } catch (const json::FaultError& error) {
        value.Refuse(error.Faults().front());
        return std::nullopt;
    }
}

bool JsonFieldReader::Flag(const Field& field, bool fValue) {
    const json::Value value = Find(field);
    const auto filled = Filled(value);
    return filled ? value.With(*filled).Flag().value_or(fValue) : fValue;
}

Integer JsonFieldReader::Number(const Field& field, Integer nValue, Integer nMin, Integer nMax) {
    const json::Value value = Find(field);
    const auto filled = Filled(value);
    return filled ? value.With(*filled).WholeNumber(nMin, nMax).value_or(nValue) : nValue;
}

std::vector<Integer> JsonFieldReader::Keys(const Field& field, const std::vector<Integer>& keys,
                                           Integer nMin, Integer nMax,
                                           const PositionCodeOf& /*positionCodeOf*/) {
    const json::Value value = Find(field);
    if (!value.IsList())
        return keys;
    std::vector<Integer> numbers;
    for (const json::Value& element : value.Elements())
        if (const auto number = element.WholeNumber(nMin, nMax))
            numbers.push_back(*number);
    return numbers;
}

std::string JsonFieldReader::Text(const Field& field, const std::string& sValue,
                                  std::size_t maxUnits) {
    const json::Value value = Find(field);
    std::optional<std::string> text = value.Text();
    if (!text)
        return sValue;
    try {
        text = m_variables.Fill(*text);
    } catch (const json::FaultError& error) {
        value.Refuse(error.Faults().front());
        return sValue;
    }
    const std::size_t units = Utf16FromUtf8(*text).size();
    if (units > maxUnits)
        value.Refuse(FaultKind::TextTooLong, units, maxUnits);
    else if (text->find('\0') != std::string::npos)
        value.Refuse(FaultKind::TextWithNul);
    else
        return *text;
    return sValue;
}

std::vector<Byte> JsonFieldReader::CodesOf(std::string_view text) const {
    const auto pieces = m_variables.Split(text);
    const auto isApart = [&](std::size_t i) {
        return (i == 0 || pieces[i - 1].isValue || IsBlank(text[pieces[i].begin - 1])) &&
               (i + 1 == pieces.size() || pieces[i + 1].isValue || IsBlank(text[pieces[i].end]));
    };
    for (std::size_t i = 0; i < pieces.size(); ++i)
        if (pieces[i].isValue && !isApart(i))
            throw json::FaultError(
                {{"", FaultKind::PlaceholderNotApart,
                  text.substr(pieces[i].begin, pieces[i].end - pieces[i].begin)}});
    std::vector<Byte> codes;
    for (const Variables::Piece& piece : pieces) {
        const auto more =
            piece.isValue
                ? CodesThatType(piece.text, *m_layout)
                : ParseSequenceText(BlanksFor(text.substr(0, piece.begin)) + piece.text, *m_layout);
        codes.insert(codes.end(), more.begin(), more.end());
    }
    if (std::find(codes.begin(), codes.end(), Byte{0}) != codes.end())
        throw json::FaultError({{"", FaultKind::SequenceWithZero}});
    return codes;
}

std::optional<std::vector<Byte>> JsonFieldReader::ReadCodes(const json::Value& value) {
    if (!value.Exists())
        return std::nullopt;
    if (value.AsJson().is_string()) {
        try {
            if (m_layout != nullptr)
                return CodesOf(value.AsJson().get<std::string>());
            value.Refuse(FaultKind::SequenceWithoutNames);
        } catch (const json::FaultError& error) {
            value.Refuse(error.Faults().front());
        } catch (const UntypableCharacter& error) {
            value.Refuse(FaultKind::NoKeyTypes, error.Character());
        } catch (const SequenceTextError& error) {
            value.Refuse(json::FaultOfText(FaultKind::SequenceText, error.Fault()));
        }
        return std::nullopt;
    }
    if (!value.AsJson().is_array()) {
        value.RefuseAs(FaultKind::NotASequence);
        return std::nullopt;
    }
    std::vector<Byte> codes;
    for (const json::Value& element : value.Elements())
        if (const auto code = element.WholeNumber<Byte>(1, 255, FaultKind::NotACode))
            codes.push_back(*code);
    return codes.size() == value.AsJson().size() ? std::optional(codes) : std::nullopt;
}

void JsonFieldReader::Sequence(const Field& field, KeySequence& sequence, Integer nSlot) {
    const json::Value value = Find(field);
    const auto codes = ReadCodes(value);
    if (!codes)
        return;
    if (codes->size() > static_cast<std::size_t>(nSlot)) {
        value.Refuse(FaultKind::SequenceTooLong, codes->size(), nSlot);
        return;
    }
    sequence.Clear();
    for (const Byte code : *codes)
        sequence.AddByte(code);
}

void JsonFieldReader::Object(const Field& field, const std::function<void()>& members) {
    ReadObject(Find(field), members);
}

void JsonFieldReader::Array(const Field& field, std::size_t count, Integer /*nFirst*/,
                            const std::function<void(const Field&, std::size_t)>& element) {
    auto outer = std::exchange(m_elements, Find(field).Elements(count));
    for (std::size_t i = 0; i < m_elements.size(); ++i) {
        const std::string index = std::to_string(i);
        element({index, ""}, i);
    }
    m_elements = std::move(outer);
}

std::optional<FieldList::Id> JsonFieldReader::ReadId(const FieldList& list) {
    FieldList::Id id;
    for (const FieldList::KeyMember& member : list.keyMembers)
        if (const auto number = Find({member.key, ""}).WholeNumber(member.min, member.max))
            id.push_back(*number);
    return id.size() == list.keyMembers.size() ? std::optional(id) : std::nullopt;
}

void JsonFieldReader::List(const FieldList& list) {
    const json::Value value = Find(list.field);
    if (!value.IsList())
        return;
    list.clear();
    std::set<FieldList::Id> seen;
    for (const json::Value& element : value.Elements()) {
        if (element.AllFaults().AreEnough())
            return;
        ReadObject(element, [&] {
            const auto id = ReadId(list);
            if (id && !seen.insert(*id).second)
                element.Refuse(FaultKind::ElementTwice, IdText(list, *id));
            // Without an identity the members cannot be assigned to an element, and are not
            // reported as unknown.
            if (id)
                list.visit(*id);
            else
                (void)m_object->All();
        });
    }
}

void JsonFieldReader::Refuse(const Field& field, const Fault& fault) {
    (m_elements.empty() ? m_object->Find(field.key) : Find(field)).Refuse(fault);
}

} // namespace qx::host
