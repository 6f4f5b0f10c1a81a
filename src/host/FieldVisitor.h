// FieldVisitor: a walk over the settings of a section, for any purpose.
//
// Each section of the configuration describes its settings once, as a walk over named fields;
// reading a document, writing one, comparing two and printing for people are visitors of that walk.
// A field's method returns the setting's new value: the current one, or the one just read.
#pragma once

#include "qxcontrols/keys/KeySequence.h"
#include "json/Fault.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qx::host {

struct Field {
    std::string_view key;   // its name in a document
    std::string_view label; // its name in English; empty where the outer names are enough
    bool required = true;   // in a document; other fields may be omitted
    bool stored = true;     // in the keyboard; other fields are shown, but never compared
    bool kept = false;      // keeps the keyboard's value if the document does not contain it
};

// A list of the elements with content, each identified by the numbers in its key members.
struct FieldList {
    using Id = std::vector<Integer>;
    struct KeyMember {
        std::string_view key;
        std::string_view label; // in English: "Layer"; empty where the legend is enough
        Integer min;
        Integer max;
        std::string (*legend)(Integer) = nullptr; // as the device counts, where not from 0: "F4"
    };

    Field field;
    std::vector<KeyMember> keyMembers;
    std::vector<Id> present;                       // in the order in which they are written
    std::function<void()> clear;                   // empties all elements, before reading
    std::function<void(const Id&)> visit;          // walks the element's other members
    std::function<std::vector<Id>()> possible;     // all elements that can have content
    std::function<Long(const Id&)> positionCodeOf; // of a key with a caption; may be empty
};

class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;

    [[nodiscard]] virtual bool Flag(const Field& field, bool fValue) = 0;
    [[nodiscard]] virtual Integer Number(const Field& field, Integer nValue, Integer nMin,
                                         Integer nMax) = 0;
    // Any number of key numbers in a fixed range. They are displayed with the captions of their
    // position codes.
    using PositionCodeOf = std::function<Long(Integer)>;
    [[nodiscard]] virtual std::vector<Integer> Keys(const Field& field,
                                                    const std::vector<Integer>& keys, Integer nMin,
                                                    Integer nMax,
                                                    const PositionCodeOf& positionCodeOf) = 0;
    // UTF-8 text of at most maxUnits UTF-16 units.
    [[nodiscard]] virtual std::string Text(const Field& field, const std::string& sValue,
                                           std::size_t maxUnits) = 0;
    // A sequence for a slot of nSlot bytes.
    virtual void Sequence(const Field& field, KeySequence& sequence, Integer nSlot) = 0;

    virtual void Object(const Field& field, const std::function<void()>& members) = 0;
    // A fixed number of elements, which people number from nFirst. `element` walks one of them,
    // with the Field that it is given and its index from 0.
    virtual void Array(const Field& field, std::size_t count, Integer nFirst,
                       const std::function<void(const Field&, std::size_t)>& element) = 0;
    virtual void List(const FieldList& list) = 0;

    // Whether the walk changes the settings.
    [[nodiscard]] virtual bool IsReading() const { return false; }
    // Whether the walk handles settings exactly as the controls hold them, including those that are
    // not stored in documents or keyboards.
    [[nodiscard]] virtual bool IsExact() const { return false; }
    // Reports that the value just read for the field is invalid; only for a walk that reads and is
    // not exact. The field's place becomes the fault's.
    virtual void Refuse(const Field& /*field*/, const json::Fault& /*fault*/) {}
};

} // namespace qx::host
