// JsonFieldWriter: the walk that writes a section into a document.
#pragma once

#include "host/FieldVisitor.h"
#include "host/Json.h"

namespace qx::host {

class JsonFieldWriter : public FieldVisitor {
public:
    // Writes into `section`, which becomes an object.
    explicit JsonFieldWriter(Json& section);

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
    // Where the field's value goes: a member of the object, or the next element of the array.
    Json& Place(const Field& field);
    void Within(Json& value, const std::function<void()>& walk);

    Json* m_value;
};

} // namespace qx::host
