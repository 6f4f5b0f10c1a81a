#include "host/FieldLister.h"

#include "host/PlacedVisitor.h"
#include "host/Snapshot.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"

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

std::string ElementLabel(const FieldList& list, const FieldList::Id& id, const Words& words) {
    std::string text;
    for (std::size_t i = 0; i < id.size(); ++i) {
        const std::string_view label = list.keyMembers[i].label;
        text = Joined(text, words ? words(label) : std::string(label));
        text = Joined(text, std::to_string(id[i]));
    }
    return text;
}

FieldLister::FieldLister(std::string_view key, std::string_view title,
                         const QXKeyboardLayoutData* layout, std::vector<Setting>& settings,
                         Words words)
    : m_layout(layout), m_words(std::move(words)), m_settings(settings),
      m_place("/" + std::string(key)), m_name(Word(title)) {}

std::string FieldLister::Word(std::string_view label) const {
    return m_words && !label.empty() && label != m_element ? m_words(label) : std::string(label);
}

// Whether to list a setting that is listed usually, or is not.
bool FieldLister::IsWanted(const Field& field, bool isUsual) const {
    return (isUsual || m_listed == Listed::All) &&
           (m_only == nullptr || m_only->contains(m_place + "/" + std::string(field.key)));
}

void FieldLister::Add(const Field& field, std::string value, bool isSequence) {
    Setting& setting = m_settings.emplace_back();
    setting.place = m_place + "/" + std::string(field.key);
    setting.name = Joined(m_name, Word(field.label));
    setting.value = std::move(value);
    setting.row = m_row;
    setting.column = field.label.empty() ? std::string(field.key) : Word(field.label);
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
    if (IsWanted(field, field.stored)) // a switch that nothing stores means nothing to people
        Add(field, Word(fValue ? "on" : "off"));
    return fValue;
}

Integer FieldLister::Number(const Field& field, Integer nValue, Integer /*nMin*/,
                            Integer /*nMax*/) {
    if (IsWanted(field, true)) {
        Add(field, std::to_string(nValue));
        m_settings.back().isGradual = true;
    }
    return nValue;
}

std::vector<Integer> FieldLister::Keys(const Field& field, const std::vector<Integer>& keys,
                                       Integer /*nMin*/, Integer /*nMax*/,
                                       const PositionCodeOf& positionCodeOf) {
    if (!IsWanted(field, true))
        return keys;
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
    if (IsWanted(field, field.required || !sValue.empty())) {
        Add(field, "\"" + sValue + "\"");
        m_settings.back().isGradual = true;
    }
    return sValue;
}

void FieldLister::Sequence(const Field& field, KeySequence& sequence, Integer /*nSlot*/) {
    if (!IsWanted(field, field.required || sequence.Length() > 0))
        return;
    std::vector<Byte> codes;
    for (const Integer code : sequence.Codes())
        codes.push_back(static_cast<Byte>(code));
    std::string text;
    if (m_layout == nullptr)
        for (const Byte code : codes)
            text = Joined(text, InBraces(code));
    else
        text = (m_writer ? *m_writer : m_writer.emplace(*m_layout)).Text(codes);
    Add(field, codes.empty() ? Word("(empty)") : text, true);
}

void FieldLister::Object(const Field& field, const std::function<void()>& members) {
    Within(field.key, Word(field.label), members);
}

void FieldLister::Array(const Field& field, std::size_t count, Integer nFirst,
                        const std::function<void(const Field&, std::size_t)>& element) {
    Within(field.key, "", [&] {
        for (std::size_t i = 0; i < count; ++i) {
            const std::string index = std::to_string(i);
            m_element =
                Joined(Word(field.label), std::to_string(i + static_cast<std::size_t>(nFirst)));
            element({index, m_element}, i);
        }
    });
}

void FieldLister::List(const FieldList& list) {
    std::vector<FieldList::Id> ids = list.present;
    if (m_only != nullptr) {
        const auto wanted = IdsIn(*m_only, m_place + "/" + std::string(list.field.key));
        if (m_listed == Listed::All)
            ids.assign(wanted.begin(), wanted.end());
        else
            std::erase_if(ids, [&](const FieldList::Id& id) { return !wanted.contains(id); });
    }
    for (const FieldList::Id& id : ids) {
        const std::string key = ElementPlace(std::string(list.field.key), id);
        m_row = ElementLabel(list, id, m_words);
        if (list.isOfKeys && m_layout != nullptr && !m_layout->KeyCaption(id[0]).empty())
            m_row += " (" + m_layout->KeyCaption(id[0]) + ")";
        Within(key, m_row, [&] { list.visit(id); });
    }
    m_row.clear();
}

} // namespace qx::host
