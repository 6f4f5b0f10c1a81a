#include "app/KeyEdits.h"

#include "app/EditRequests.h"
#include "app/SettingWords.h"
#include "app/Workbench.h"

#include <set>

namespace qx::app {

KeyEdits::KeyEdits(Workbench& workbench, EditRequests& edits, std::string_view sectionKey)
    : m_workbench(workbench), m_edits(edits), m_section(sectionKey) {}

host::Section& KeyEdits::Section() const {
    return *m_workbench.Configuration().Find(m_section);
}

std::string KeyEdits::SenderOf(int key) const {
    return "/" + m_section + "/" + m_workbench.Faces().Of(m_section).SenderOf(key);
}

std::string KeyEdits::PlaceOf(int key) const {
    return "/" + m_section + "/" + m_workbench.Faces().Of(m_section).PlaceOf(key);
}

QString KeyEdits::NameAt(const std::string& element) const {
    return NameInSection(m_workbench.Configuration().NameOf(Section(), element));
}

QString KeyEdits::NameOf(int key) const {
    return NameAt(PlaceOf(key));
}

QString KeyEdits::SenderName(int key) const {
    return WithGroup(NameAt(SenderOf(key)), m_workbench.Faces().Of(m_section).GroupOf(key));
}

std::vector<KeyEdits::Sent> KeyEdits::SentBy(const std::vector<int>& keys) const {
    std::set<std::string> senders;
    for (const int key : keys)
        senders.insert(SenderOf(key));
    const host::SequenceSlots found(Section(), senders);
    std::vector<Sent> sent(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        if (const auto* slot = found.Find(SenderOf(keys[i]))) {
            sent[i].capacity = slot->capacity;
            sent[i].description = m_workbench.Faces().Of(m_section).DescriptionOf(keys[i]);
            for (const Integer code : slot->codes)
                sent[i].codes.push_back(static_cast<Byte>(code));
        }
    return sent;
}

std::vector<int> KeyEdits::Senders(const std::vector<int>& keys) const {
    std::vector<int> senders;
    std::set<std::string> places;
    for (const int key : keys)
        if (places.insert(SenderOf(key)).second)
            senders.push_back(key);
    return senders;
}

bool KeyEdits::Put(const std::map<int, Content>& wanted, bool goesOn) {
    host::SequenceSlots::Wanted byPlace;
    std::set<std::string> senders;
    for (const auto& [key, content] : wanted) {
        byPlace.emplace(SenderOf(key), content.codes);
        senders.insert(SenderOf(key));
    }
    host::SequenceSlots found(Section(), senders);
    const auto refusal = found.RefusalOf(byPlace);
    if (!refusal)
        return Edit(
            [&] {
                for (const auto& [key, content] : wanted)
                    if (content.description)
                        m_workbench.Faces().Of(m_section).Describe(key, *content.description);
                found.Put(byPlace);
            },
            goesOn);
    for (const auto& [key, content] : wanted) {
        if (SenderOf(key) != refusal->element)
            continue;
        Report(refusal->capacity == 0
                   ? tr("%1 cannot be programmed. Nothing has been changed.").arg(NameOf(key))
                   : tr("%1 has room for %2 codes, but the sequence has %3. Nothing has been "
                        "changed.")
                         .arg(NameOf(key))
                         .arg(refusal->capacity)
                         .arg(refusal->length));
        break;
    }
    return false;
}

bool KeyEdits::Edit(const std::function<void()>& change, bool goesOn) {
    const std::size_t before = m_workbench.History().LastStep();
    m_workbench.Edit(Section(), change, goesOn);
    return m_workbench.History().LastStep() != before;
}

void KeyEdits::Report(const QString& text) const {
    m_edits.Report(text);
}

void KeyEdits::ReportDone(const QString& text) const {
    m_edits.ReportDone(text);
}

} // namespace qx::app
