#include "host/FieldLister.h"

#include "host/PlacedVisitor.h"
#include "host/Snapshot.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

#include <utility>

namespace qx::host {

namespace {

std::string Joined(const std::string& words, const std::string& word) {
    return words.empty() || word.empty() ? words + word : words + " " + word;
}

std::string InBraces(Integer nCode) {
    return "{" + std::to_string(nCode) + "}";
}

SettingValue TextValue(std::string text) {
    return {SettingValue::Kind::Text, std::move(text)};
}

// The parts that name an element of a list: "Layer 3", "F4", or "Key 30 (A)" by the layout, which
// may be null.
std::vector<NamePart> ElementName(const FieldList& list, const FieldList::Id& id,
                                  const QXKeyboardLayoutData* layout) {
    std::vector<NamePart> parts;
    for (std::size_t i = 0; i < id.size(); ++i) {
        const FieldList::KeyMember& member = list.keyMembers[i];
        parts.push_back({member.key, member.label,
                         member.legend != nullptr ? member.legend(id[i]) : std::to_string(id[i])});
    }
    if (list.positionCodeOf) {
        const Long code = list.positionCodeOf(id);
        parts.back().number = KeyName(id.back(), KeyLabel(code, layout));
        if (layout != nullptr)
            parts.back().longCaption = layout->KeyLongCaption(code);
    }
    return parts;
}

} // namespace

FieldLister::FieldLister(SettingName section, const QXKeyboardLayoutData* layout,
                         std::vector<Setting>& settings, Listed listed,
                         const std::set<std::string>* only, const OptionCaptions* captions)
    : m_layout(layout), m_listed(listed), m_only(only), m_captions(captions), m_settings(settings),
      m_place("/" + std::string(section.section)), m_name(std::move(section)) {}

// Whether the setting is listed, given that it is usually listed or not.
bool FieldLister::IsWanted(const Field& field, bool isUsual) const {
    return m_listed != Listed::Elements && (isUsual || m_listed == Listed::All) &&
           (m_only == nullptr || m_only->contains(m_place + "/" + std::string(field.key)));
}

// The element of an array is named by the array and its number.
NamePart FieldLister::PartOf(const Field& field) const {
    return m_element ? *m_element : NamePart{field.key, field.label, {}};
}

Setting& FieldLister::Add(const Field& field, SettingValue value) {
    Setting& setting = m_settings.emplace_back();
    setting.place = m_place + "/" + std::string(field.key);
    setting.name = m_name;
    setting.name.parts.push_back(PartOf(field));
    setting.value = std::move(value);
    setting.isStored = field.stored;
    setting.isKept = field.kept;
    return setting;
}

void FieldLister::Within(std::string_view key, std::vector<NamePart> parts,
                         const std::function<void()>& walk) {
    const std::size_t outerPlace = m_place.size();
    const std::size_t outerParts = m_name.parts.size();
    m_place.append("/").append(key);
    m_name.parts.insert(m_name.parts.end(), parts.begin(), parts.end());
    walk();
    m_place.resize(outerPlace);
    m_name.parts.resize(outerParts);
}

bool FieldLister::Flag(const Field& field, bool fValue) {
    if (IsWanted(field, field.stored)) // a switch that is not stored is meaningless to people
        Add(field, {fValue ? SettingValue::Kind::On : SettingValue::Kind::Off});
    return fValue;
}

Integer FieldLister::Number(const Field& field, Integer nValue, Integer /*nMin*/,
                            Integer /*nMax*/) {
    if (IsWanted(field, true))
        Add(field, TextValue(std::to_string(nValue))).isGradual = true;
    return nValue;
}

std::vector<Integer> FieldLister::Keys(const Field& field, const std::vector<Integer>& keys,
                                       Integer /*nMin*/, Integer /*nMax*/,
                                       const PositionCodeOf& positionCodeOf) {
    if (!IsWanted(field, true))
        return keys;
    std::string text;
    for (const Integer key : keys)
        text += (text.empty() ? "" : ", ") + KeyName(key, KeyLabel(positionCodeOf(key), m_layout));
    Add(field, TextValue(text));
    return keys;
}

std::string FieldLister::Text(const Field& field, const std::string& sValue,
                              std::size_t /*maxUnits*/) {
    if (IsWanted(field, field.required || !sValue.empty()))
        Add(field, {SettingValue::Kind::Quoted, sValue}).isGradual = true;
    return sValue;
}

void FieldLister::Sequence(const Field& field, KeySequence& sequence, Integer /*nSlot*/) {
    if (!IsWanted(field, field.required || sequence.Length() > 0))
        return;
    const auto bytes = sequence.Bytes();
    std::string text;
    if (m_layout == nullptr || !bytes)
        for (const Integer code : sequence.Codes())
            text = Joined(text, InBraces(code));
    else
        text = (m_writer ? *m_writer : m_writer.emplace(*m_layout)).Text(*bytes);
    Add(field, text.empty() ? SettingValue{SettingValue::Kind::Empty} : TextValue(text));
}

void FieldLister::Object(const Field& field, const std::function<void()>& members) {
    NamePart part = PartOf(field);
    const auto outer = std::exchange(m_element, std::nullopt);
    if (part.label.empty())
        Within(field.key, {}, members);
    else
        Within(field.key, {std::move(part)}, members);
    m_element = outer;
}

void FieldLister::Array(const Field& field, std::size_t count, Integer nFirst,
                        const std::function<void(const Field&, std::size_t)>& element) {
    Within(field.key, {}, [&] {
        for (std::size_t i = 0; i < count; ++i) {
            const std::string index = std::to_string(i);
            m_element = NamePart{field.key, field.label,
                                 std::to_string(i + static_cast<std::size_t>(nFirst))};
            if (m_captions != nullptr)
                m_element->caption = m_captions->Find(m_place + "/" + index);
            element({index, field.label}, i);
            m_element.reset();
        }
    });
}

std::vector<FieldList::Id> FieldLister::IdsOf(const FieldList& list) const {
    if (m_listed == Listed::Elements)
        return list.possible();
    std::vector<FieldList::Id> ids = list.present;
    if (m_only == nullptr)
        return ids;
    const auto wanted = IdsIn(*m_only, m_place + "/" + std::string(list.field.key));
    if (m_listed == Listed::All)
        ids.assign(wanted.begin(), wanted.end());
    else
        std::erase_if(ids, [&](const FieldList::Id& id) { return !wanted.contains(id); });
    return ids;
}

void FieldLister::List(const FieldList& list) {
    for (const FieldList::Id& id : IdsOf(list)) {
        const std::string key = ElementPlace(std::string(list.field.key), id);
        std::vector<NamePart> parts = ElementName(list, id, m_layout);
        m_name.elementParts = m_name.parts.size() + parts.size();
        Within(key, std::move(parts), [&] {
            if (m_listed == Listed::Elements)
                m_settings.emplace_back(Setting{m_place, m_name, {}});
            else
                list.visit(id);
        });
    }
    m_name.elementParts = 0;
}

} // namespace qx::host
