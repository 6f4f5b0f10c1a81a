// JsonFieldWriter: the walk that writes a section into a document.
//
// It writes nothing that a JsonFieldReader refuses: what is too long is cut as it is on its way
// into the keyboard, and what no keyboard can hold is left out. Each such loss is noted with its
// place.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/FieldVisitor.h"

namespace qx::host {

class JsonFieldWriter : public FieldVisitor {
public:
    // Writes into `section`, which becomes an object and is at `place` (a JSON pointer) of its
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
    // Where the field's value goes: a member of the object, or the next element of the array.
    Json& Place(const Field& field);
    // The place of the field that was written last.
    [[nodiscard]] std::string LastPlace(const Field& field) const;
    void NoteLoss(const Field& field, Loss::Kind kind);
    void Within(Json& value, std::string place, const std::function<void()>& walk);

    Json* m_value;
    std::string m_place;
    std::vector<Loss>& m_losses;
};

} // namespace qx::host
