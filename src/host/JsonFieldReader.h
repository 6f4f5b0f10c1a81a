// JsonFieldReader: the walk that reads a section out of a document, strictly.
//
// Nothing is guessed: an unknown or missing member, a wrong type, a number out of its range or a
// sequence longer than its slot is a fault with its place. The walk goes on behind a fault, so that
// one reading names them all; a setting with a fault keeps its value.
#pragma once

#include "host/Error.h"
#include "host/FieldVisitor.h"
#include "host/Json.h"
#include "host/Variables.h"

#include <set>

namespace qx {
class QXKeyboardLayoutData;
}

namespace qx::host {

class JsonFieldReader : public FieldVisitor {
public:
    // Reads `section`, which stands at `place` (a JSON pointer) of its document. Sequences given as
    // text are read with the captions of `layout`, which may be null. `variables` stand in the
    // place of placeholders.
    JsonFieldReader(const Json& section, std::string place, const QXKeyboardLayoutData* layout,
                    Variables& variables, std::vector<Fault>& faults);

    // Walks the section, then names the members that the walk did not ask for.
    void Read(const std::function<void(FieldVisitor&)>& walk);

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
    void Refuse(const Field& field, const std::string& sReason) override;

private:
    struct Level {
        const Json* value;
        std::string place;
        std::set<std::string, std::less<>> asked; // the members that the walk has asked for
    };

    static constexpr std::size_t kMostFaults = 1000;

    // The field's value; null, with a fault where it is required, when there is none.
    const Json* Find(const Field& field);
    [[nodiscard]] std::string PlaceOf(std::string_view key) const;
    void AddFault(const std::string& place, const std::string& message);
    // No more are reported; the rest of a list is not read then.
    [[nodiscard]] bool HasEnoughFaults() const { return m_faults.size() > kMostFaults; }
    void Within(const Json& value, const std::string& place, const std::function<void()>& walk);
    void ReadObject(const Json& value, const std::string& place,
                    const std::function<void()>& members);
    std::optional<Integer> WholeNumber(const Json& value, const std::string& place, Integer nMin,
                                       Integer nMax, std::string_view sKind);
    std::optional<FieldList::Id> ReadId(const FieldList& list, const std::string& place);
    std::optional<std::vector<Byte>> ReadCodes(const Json& value, const std::string& place);
    [[nodiscard]] std::vector<Byte> CodesOf(std::string_view text) const;
    // The number or switch that a text means which is a placeholder and nothing else; any other
    // value as it is. Discarded, with a fault, where that cannot be told.
    [[nodiscard]] Json Filled(const Json& value, const std::string& place);

    const QXKeyboardLayoutData* m_layout;
    Variables& m_variables;
    std::vector<Fault>& m_faults;
    Level m_level;
};

} // namespace qx::host
