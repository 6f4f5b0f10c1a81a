// FieldLister: the walk that tells settings for people, one by one.
#pragma once

#include "host/FieldVisitor.h"
#include "qxcontrols/keys/SequenceText.h"

#include <optional>
#include <set>

namespace qx::host {

// One setting: "barcode Code39 minimum length" is "1".
struct Setting {
    std::string
        place; // the same for the same setting of any document: "/barcode/pages/Code39/minSize"
    std::string name;
    std::string value;
    std::string row;    // the element of a list that it belongs to, "layer 0 key 3", or empty
    std::string column; // its name within that element
    bool isSequence = false;
    bool isGradual = false; // a number or a text
    bool isStored = true;   // in the keyboard; false for what only documents hold
    bool isKept = false;    // when others do not have it
};

// Whether empty settings, and those that no keyboard stores, are listed as well.
enum class Listed { Usual, All };

class FieldLister : public FieldVisitor {
public:
    // Lists the section that has this key and this name for people. Sequences are told with the
    // captions of `layout`, or by their codes where it is null.
    FieldLister(std::string_view key, std::string_view title, const QXKeyboardLayoutData* layout,
                std::vector<Setting>& settings, Words words = {});
    // From now on, lists the settings at these places alone. The places stay alive as long as the
    // lister.
    void Only(const std::set<std::string>& places, Listed listed) {
        m_only = &places;
        m_listed = listed;
    }

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
    [[nodiscard]] bool IsWanted(const Field& field, bool isUsual) const;
    void Add(const Field& field, std::string value, bool isSequence = false);
    void Within(std::string_view key, std::string_view label, const std::function<void()>& walk);

    [[nodiscard]] std::string Word(std::string_view label) const;

    const QXKeyboardLayoutData* m_layout;
    std::optional<SequenceWriter> m_writer; // made for the first sequence
    const std::set<std::string>* m_only = nullptr;
    Listed m_listed = Listed::Usual;
    Words m_words;
    std::vector<Setting>& m_settings;
    std::string m_place;
    std::string m_name;
    std::string m_element; // label of an array's element, in words already
    std::string m_row;
};

} // namespace qx::host
