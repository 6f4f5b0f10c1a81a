// JsonFieldWriter: the walk that writes a section to a document.
//
// A JsonFieldReader accepts everything it writes: texts that are too long are cut as on their way
// into the keyboard, and values that no keyboard can hold are omitted. Each such loss is recorded
// with its place.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/FieldVisitor.h"

namespace qx::host {

class JsonFieldWriter : public FieldVisitor {
public:
    // Writes to `section`, which becomes an object and is at `place` (a JSON pointer) in its
    // document.
    JsonFieldWriter(Json& section, std::string place, std::vector<Loss>& losses);

    bool Flag(const Field& field, bool fValue) override;
    Integer Number(const Field& field, Integer nValue, Integer nMin, Integer nMax) override;
    std::vector<Integer> Keys(const Field& field, const std::vector<Integer>& keys, Integer nMin,
                              Integer nMax, const PositionCodeOf& positionCodeOf) override;
    std::string Text(const Field& field, const std::string& sValue, std::size_t maxUnits) override;
    void Sequence(const Field& field, KeySequence& sequence, Integer nSlot) override;
    void Object(const Field& field, const std::function<void()>& members) override;
    void Array(const Field& field, std::size_t count, Integer nFirst,
               const std::function<void(const Field&, std::size_t)>& element) override;
    void List(const FieldList& list) override;

private:
    // The destination of the field's value: a member of the object, or the next element of the
    // array.
    Json& Place(const Field& field);
    // The place of the field written last.
    [[nodiscard]] std::string LastPlace(const Field& field) const;
    void NoteLoss(const Field& field, Loss::Kind kind);
    void Within(Json& value, std::string place, const std::function<void()>& walk);

    Json* m_value;
    std::string m_place;
    std::vector<Loss>& m_losses;
};

} // namespace qx::host
