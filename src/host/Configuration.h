// Configuration: the settings of all modules of a keyboard, in the controls that edit them.
//
// It owns one section for each module control, and transfers their settings to and from documents.
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

// The information used from the layout.
enum class LayoutUse {
    Keyboard, // everything: it is the keyboard's own and determines the programmable keys
    Captions, // only the keys' names: any key may be programmable in some keyboard
};

class Configuration {
public:
    // All sections with default values. The services, the layout and the preferences (the latter
    // two may be null) must outlive this object.
    explicit Configuration(const Platform& platform, QXKeyboardLayoutData* layout,
                           QXProgSettings* preferences, LayoutUse use = LayoutUse::Keyboard);

    [[nodiscard]] const std::vector<std::unique_ptr<Section>>& Sections() const {
        return m_sections;
    }
    [[nodiscard]] Section* Find(std::string_view key) const; // null for an unknown key

    // Reads the settings of all sections in the document and returns these sections. Strict: if
    // there is any fault, throws Error(DocumentInvalid) with all of them and leaves all settings
    // unchanged. Placeholders in the document are replaced by the variables.
    std::vector<Section*> Read(const ConfigurationDocument& document);
    std::vector<Section*> Read(const ConfigurationDocument& document, Variables& variables);

    // Takes, and restores, all settings exactly.
    [[nodiscard]] std::vector<Snapshot> TakeAll() const;
    void RestoreAll(const std::vector<Snapshot>& all);

    // The names of options in the lists below; none at first.
    void SetCaptions(OptionCaptions captions) { m_captions = std::move(captions); }
    [[nodiscard]] const OptionCaptions& Captions() const { return m_captions; }

    // A document of these sections that Read accepts.
    [[nodiscard]] ConfigurationDocument Write(const std::vector<Section*>& sections) const;
    [[nodiscard]] ConfigurationDocument Write(const std::vector<Section*>& sections,
                                              KeyboardInfo keyboard) const;

    // The settings of these sections, for people; or the elements of their lists.
    [[nodiscard]] std::vector<Setting> List(const std::vector<Section*>& sections,
                                            Listed listed = Listed::Usual) const;
    // The same, but only for the settings at these places.
    [[nodiscard]] std::vector<Setting>
    List(const Section& section, const std::set<std::string>& places, Listed listed) const;
    // The name of the section's key or block at this place, "POS keys › Key 3 (F2)": the name that
    // every list of settings has for it.
    [[nodiscard]] SettingName NameOf(const Section& section, const std::string& element) const;

private:
    std::vector<Section*> ReadSections(const ConfigurationDocument& document, Variables& variables,
                                       json::Faults& faults);

    QXKeyboardLayoutData* m_layout;
    std::vector<std::unique_ptr<Section>> m_sections;
    OptionCaptions m_captions;
};

// A setting that differs between two configurations.
struct Difference {
    std::string place;
    SettingName name;
    SettingValue from; // of the kind None where one of them has no such setting
    SettingValue to;
};

// In English: "Barcode reader › Code 39 › Shortest code: 1 → 4", "POS keys › Key 12 (F2): Ctrl C →
// Esc".
[[nodiscard]] std::string ToText(const Difference& difference);

// The differences between stored settings. With documents, a setting that one of them does not
// contain and the keyboard would keep is not a difference.
enum class Sides { Documents, Keyboards };
[[nodiscard]] std::vector<Difference> Compare(const std::vector<Setting>& from,
                                              const std::vector<Setting>& to,
                                              Sides sides = Sides::Documents);

} // namespace qx::host
