// Configuration: the settings of all modules of a keyboard set-up, in the controls that edit them.
//
// It owns one section for each module control, and moves their settings into and out of documents.
// The controls work with or without a keyboard.
#pragma once

#include "host/ConfigurationDocument.h"
#include "host/Error.h"
#include "host/FieldLister.h"
#include "host/KeyboardInfo.h"
#include "host/Section.h"
#include "host/Snapshot.h"
#include "host/Variables.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace qx::host {

// What a configuration takes from its layout.
enum class LayoutUse {
    Keyboard, // all: it is the keyboard's own, and says which keys can be programmed
    Captions, // the names of keys only: any key can be programmed, as on some keyboard
};

class Configuration {
public:
    // All sections with default values. The services, the layout and the preferences (both may be
    // null) stay alive as long as this object.
    explicit Configuration(const Platform& platform, QXKeyboardLayoutData* layout,
                           QXProgSettings* preferences, LayoutUse use = LayoutUse::Keyboard);

    [[nodiscard]] const std::vector<std::unique_ptr<Section>>& Sections() const {
        return m_sections;
    }
    [[nodiscard]] Section* Find(std::string_view key) const; // null for an unknown key

    // Takes over the settings of all sections that the document has, and returns these sections.
    // Strict: with any fault, Error(DocumentInvalid) is thrown with all of them, and all settings
    // are as they were. The variables replace the document's placeholders.
    std::vector<Section*> Read(const ConfigurationDocument& document);
    std::vector<Section*> Read(const ConfigurationDocument& document, Variables& variables);

    // All settings just as they are, and back to them.
    [[nodiscard]] std::vector<Snapshot> TakeAll() const;
    void RestoreAll(const std::vector<Snapshot>& all);

    // A document of these sections, which Read accepts.
    [[nodiscard]] ConfigurationDocument Write(const std::vector<Section*>& sections) const;
    [[nodiscard]] ConfigurationDocument Write(const std::vector<Section*>& sections,
                                              KeyboardInfo keyboard) const;

    // The settings of these sections, for people; or the elements of their lists.
    [[nodiscard]] std::vector<Setting> List(const std::vector<Section*>& sections,
                                            Listed listed = Listed::Usual) const;
    // The same of the settings at these places alone.
    [[nodiscard]] std::vector<Setting>
    List(const Section& section, const std::set<std::string>& places, Listed listed) const;

private:
    std::vector<Section*> ReadSections(const ConfigurationDocument& document, Variables& variables,
                                       json::Faults& faults);

    QXKeyboardLayoutData* m_layout;
    std::vector<std::unique_ptr<Section>> m_sections;
};

// Takes the sections out of `wanted` that are not among those that a keyboard has, and returns a
// fault of their document for each.
std::vector<Fault> TakeOutAbsent(std::vector<Section*>& wanted,
                                 const std::vector<Section*>& present);
// The refusal of a document with such faults.
[[nodiscard]] Error AbsentError(const std::string& document, const std::vector<Fault>& absent);

// A setting that two configurations have differently.
struct Difference {
    std::string place;
    SettingName name;
    SettingValue from; // of the kind None where one of them has no such setting
    SettingValue to;
    bool isSequence = false;
};

// In English: "barcode Code 39 minimum length 1 → 4", "POS key 12 (F2): Ctrl C → Esc".
[[nodiscard]] std::string ToText(const Difference& difference);

// The differences between settings that keyboards store. Where one side is a document, one that it
// lacks and the keyboard would keep is none.
enum class Sides { Documents, Keyboards };
[[nodiscard]] std::vector<Difference> Compare(const std::vector<Setting>& from,
                                              const std::vector<Setting>& to,
                                              Sides sides = Sides::Documents);

} // namespace qx::host
