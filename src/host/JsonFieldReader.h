// JsonFieldReader: the walk that reads a section from a document, strictly.
//
// Nothing is guessed: an unknown or missing member, a wrong type, a number out of range or a
// sequence longer than its slot is a fault with its place. The walk continues after a fault, so
// that one pass reports them all; a setting with a fault keeps its value.
#pragma once

#include "host/FieldVisitor.h"
#include "host/Json.h"
#include "host/Variables.h"
#include "json/Reader.h"

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::host {

class JsonFieldReader : public FieldVisitor {
public:
    // Reads sections. Sequences given as text are read with the captions of `layout`, which may be
    // null. `variables` replace placeholders.
    JsonFieldReader(const QXKeyboardLayoutData* layout, Variables& variables)
        : m_layout(layout), m_variables(variables) {}

    // Walks the section, then reports the members that the walk did not ask for.
    void Read(const json::Value& section, const std::function<void(FieldVisitor&)>& walk);

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
    [[nodiscard]] bool IsReading() const override { return true; }
    void Refuse(const Field& field, const Fault& fault) override;

private:
    // The field's value in the current object or list.
    [[nodiscard]] json::Value Find(const Field& field);
    void ReadObject(const json::Value& value, const std::function<void()>& members);
    std::optional<FieldList::Id> ReadId(const FieldList& list);
    std::optional<std::vector<Byte>> ReadCodes(const json::Value& value);
    [[nodiscard]] std::vector<Byte> CodesOf(std::string_view text) const;
    // Replaces a text that is exactly one placeholder by its number or switch, and returns other
    // values unchanged; returns none, with a fault, if that is not possible.
    [[nodiscard]] std::optional<Json> Filled(const json::Value& value);

    const QXKeyboardLayoutData* m_layout;
    Variables& m_variables;
    json::Object* m_object = nullptr;    // the current one
    std::vector<json::Value> m_elements; // of the current list, if any
};

} // namespace qx::host
