#include "host/FieldLister.h"

#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceText.h"

namespace qx::host {

namespace {

std::string Joined(const std::string& words, std::string_view word) {
    return words.empty() || word.empty() ? words + std::string(word)
                                         : words + " " + std::string(word);
}

std::string InBraces(Integer nCode) {
    return "{" + std::to_string(nCode) + "}";
}

} // namespace

FieldLister::FieldLister(std::string_view key, std::string_view title,
                         const QXKeyboardLayoutData* layout, std::vector<Setting>& settings)
    : m_layout(layout), m_settings(settings), m_place("/" + std::string(key)), m_name(title) {}

void FieldLister::Add(const Field& field, std::string value, bool isSequence) {
    Setting& setting = m_settings.emplace_back();
    setting.place = m_place + "/" + std::string(field.key);
    setting.name = Joined(m_name, field.label);
    setting.value = std::move(value);
    setting.row = m_row;
    setting.column = field.label.empty() ? field.key : field.label;
    setting.isSequence = isSequence;
    setting.isStored = field.stored;
    setting.isKept = field.kept;
}

void FieldLister::Within(std::string_view key, std::string_view label,
                         const std::function<void()>& walk) {
    const std::string outerPlace = m_place;
    const std::string outerName = m_name;
    m_place += "/" + std::string(key);
    m_name = Joined(m_name, label);
    walk();
    m_place = outerPlace;
    m_name = outerName;
}

bool FieldLister::Flag(const Field& field, bool fValue) {
    if (field.stored) // a switch that nothing stores tells people nothing
        Add(field, fValue ? "on" : "off");
    return fValue;
}

Integer FieldLister::Number(const Field& field, Integer nValue, Integer /*nMin*/,
                            Integer /*nMax*/) {
    Add(field, std::to_string(nValue));
    return nValue;
}

std::vector<Integer> FieldLister::Keys(const Field& field, const std::vector<Integer>& keys,
                                       Integer /*nMin*/, Integer /*nMax*/,
                                       const PositionCodeOf& positionCodeOf) {
    std::string text;
    for (const Integer key : keys) {
        const std::string caption =
            m_layout != nullptr ? m_layout->KeyCaption(positionCodeOf(key)) : std::string();
        text = Joined(text, caption.empty() ? std::to_string(key) : caption);
    }
    Add(field, text);
    return keys;
}

std::string FieldLister::Text(const Field& field, const std::string& sValue,
                              std::size_t /*maxUnits*/) {
    if (field.required || !sValue.empty())
        Add(field, "\"" + sValue + "\"");
    return sValue;
}

void FieldLister::Sequence(const Field& field, KeySequence& sequence, Integer /*nSlot*/) {
    if (!field.required && sequence.Length() == 0)
        return;
    std::string text;
    std::vector<Byte> codes;
    for (Integer i = 1; i <= sequence.Length(); ++i) {
        codes.push_back(static_cast<Byte>(sequence.GetPositionCode(i)));
        text = Joined(text, InBraces(codes.back()));
    }
    if (m_layout != nullptr)
        text = SequenceToText(codes, *m_layout);
    Add(field, codes.empty() ? "(empty)" : text, true);
}

void FieldLister::Object(const Field& field, const std::function<void()>& members) {
    Within(field.key, field.label, members);
}

void FieldLister::Array(const Field& field, std::size_t count, Integer nFirst,
                        const std::function<void(const Field&, std::size_t)>& element) {
    Within(field.key, "", [&] {
        for (std::size_t i = 0; i < count; ++i) {
            const std::string index = std::to_string(i);
            const std::string label = Joined(std::string(field.label),
                                             std::to_string(i + static_cast<std::size_t>(nFirst)));
            element({index, label}, i);
        }
    });
}

void FieldLister::List(const FieldList& list) {
    for (const FieldList::Id& id : list.present) {
        std::string key(list.field.key);
        for (const Integer number : id)
            key += "[" + std::to_string(number) + "]";
        m_row = list.elementLabel(id);
        if (list.isOfKeys && m_layout != nullptr && !m_layout->KeyCaption(id[0]).empty())
            m_row += " (" + m_layout->KeyCaption(id[0]) + ")";
        Within(key, m_row, [&] { list.visit(id); });
    }
    m_row.clear();
}

} // namespace qx::host
