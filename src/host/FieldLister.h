// FieldLister: the walk that lists settings for people, one by one.
#pragma once

#include "host/FieldVisitor.h"
#include "host/OptionCaptions.h"
#include "host/SettingName.h"
#include "qxcontrols/keys/SequenceText.h"

#include <optional>
#include <set>

namespace qx::host {

struct Setting {
    std::string
        place; // the same for the same setting in any document: "/barcode/pages/Code39/minSize"
    SettingName name;
    SettingValue value;
    bool isGradual = false; // a number or a text
    bool isStored = true;   // in the keyboard; false if only documents store it
    bool isKept = false;    // if it is missing in the other configuration
};

enum class Listed {
    Usual,    // settings that keyboards store, and of lists those that are not empty
    All,      // the others too
    Elements, // no settings: all elements that lists can have, such as keys
};

class FieldLister : public FieldVisitor {
public:
    // Lists the settings of the section with this name. Sequences and keys are shown with the
    // labels of `layout`, or by their codes where it is null. With `only`, lists the settings at
    // these places alone; they stay alive as long as the lister, and so do the captions.
    FieldLister(SettingName section, const QXKeyboardLayoutData* layout,
                std::vector<Setting>& settings, Listed listed = Listed::Usual,
                const std::set<std::string>* only = nullptr,
                const OptionCaptions* captions = nullptr);

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
    [[nodiscard]] NamePart PartOf(const Field& field) const;
    [[nodiscard]] std::vector<FieldList::Id> IdsOf(const FieldList& list) const;
    Setting& Add(const Field& field, SettingValue value);
    void Within(std::string_view key, std::vector<NamePart> parts,
                const std::function<void()>& walk);

    const QXKeyboardLayoutData* m_layout;
    std::optional<SequenceWriter> m_writer; // made for the first sequence
    Listed m_listed;
    const std::set<std::string>* m_only;
    const OptionCaptions* m_captions;
    std::vector<Setting>& m_settings;
    std::string m_place;
    SettingName m_name;
    std::optional<NamePart> m_element; // of the array that is walked
};

} // namespace qx::host
