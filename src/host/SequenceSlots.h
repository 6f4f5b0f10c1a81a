// SequenceSlots: the sequences that the elements of a section can have, to change several of them
// at once: all, or none where one does not fit.
//
// Elements are known by their places, such as "/freeProgKeys/keys[12]", and a sequence beside
// others by its own, such as "/magnetCard/tracks/0/header". An element that the keyboard does not
// store, like a key that cannot be programmed, has no slot.
#pragma once

#include "host/Section.h"
#include "qxcontrols/common/Types.h"

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

class SequenceSlots {
public:
    struct Slot {
        FieldList::Id id;
        std::string place; // of the sequence
        std::vector<Integer> codes;
        Integer capacity;
    };

    // The slots of these elements as they are now. The section outlives this object.
    SequenceSlots(Section& section, const std::set<std::string>& elements);

    [[nodiscard]] const Slot* Find(const std::string& element) const; // null without a slot

    // The codes of sequences, 1 to 255 each, by element.
    using Wanted = std::map<std::string, std::vector<Byte>>;
    struct Refusal {
        std::string element;
        std::size_t length; // of the sequence that does not fit into the element
        Integer capacity;   // 0: no slot
    };
    // The first that cannot be put in, if any. All are among the elements.
    [[nodiscard]] std::optional<Refusal> RefusalOf(const Wanted& wanted) const;
    // Puts them in, none being refused, and shows the control.
    void Put(const Wanted& wanted);

private:
    Section& m_section;
    std::map<std::string, Slot> m_slots;
};

} // namespace qx::host
