#include "host/SequenceSlots.h"

#include "host/PlacedVisitor.h"
#include "host/Snapshot.h"

namespace qx::host {

namespace {

using Slot = SequenceSlots::Slot;

class SlotTaker : public PlacedVisitor {
public:
    SlotTaker(const Section& section, const std::set<std::string>& elements,
              std::map<std::string, Slot>& slots)
        : PlacedVisitor(section.Info().key), m_elements(elements), m_slots(slots) {}

    void Sequence(const Field& field, KeySequence& sequence, Integer nSlot) override {
        const std::string place = PlaceOf(field);
        const std::string& element = m_element.empty() ? place : m_element;
        if (m_elements.contains(element))
            m_slots.insert_or_assign(element, Slot{m_id, place, sequence.Codes(), nSlot});
    }
    void List(const FieldList& list) override {
        if (!list.possible)
            return;
        for (const FieldList::Id& id : list.possible()) {
            m_id = id;
            m_element = ElementPlace(PlaceOf(list.field), id);
            if (m_elements.contains(m_element))
                Within(m_element, [&] { list.visit(id); });
        }
        m_element.clear();
        m_id = {};
    }
    [[nodiscard]] bool IsExact() const override { return true; }

private:
    const std::set<std::string>& m_elements;
    std::map<std::string, Slot>& m_slots;
    FieldList::Id m_id;
    std::string m_element;
};

std::string KeyStringOf(const std::vector<Byte>& codes) {
    KeySequence sequence;
    sequence.SetBytes(std::string(codes.begin(), codes.end()));
    return sequence.KeyString();
}

} // namespace

SequenceSlots::SequenceSlots(Section& section, const std::set<std::string>& elements)
    : m_section(section) {
    SlotTaker taker(section, elements, m_slots);
    section.Visit(taker);
}

const SequenceSlots::Slot* SequenceSlots::Find(const std::string& element) const {
    const auto found = m_slots.find(element);
    return found == m_slots.end() ? nullptr : &found->second;
}

std::optional<SequenceSlots::Refusal> SequenceSlots::RefusalOf(const Wanted& wanted) const {
    for (const auto& [element, codes] : wanted) {
        const Slot* slot = Find(element);
        if (slot == nullptr || codes.size() > static_cast<std::size_t>(slot->capacity))
            return Refusal{element, codes.size(), slot == nullptr ? Integer{0} : slot->capacity};
    }
    return std::nullopt;
}

void SequenceSlots::Put(const Wanted& wanted) {
    Snapshot::Values values;
    for (const auto& [element, codes] : wanted) {
        const Slot& slot = m_slots.at(element);
        if (element != slot.place)
            codes.empty() ? m_section.End(slot.id) : m_section.Begin(slot.id);
        values.emplace(slot.place, KeyStringOf(codes));
    }
    Snapshot::Put(m_section, values);
}

} // namespace qx::host
