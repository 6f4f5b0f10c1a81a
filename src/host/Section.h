// Section: the settings of one module control, as in the configuration document.
//
// A section owns its control, knows the keyboard's modules that hold its settings, and describes
// these settings as a walk. The host treats all sections alike.
#pragma once

#include "host/FieldVisitor.h"
#include "qxcontrols/device/ModuleControl.h"

#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace qx {
struct KeyModules;
}

namespace qx::host {

class SheetVisitor;

// A stretch of the keyboard's memory with a section's settings. Nothing outside the areas is read
// or written.
//
// The area consists of slots, each encoded separately; a slot may end in unused bytes, such as
// those after the 0 that ends a sequence. A slot whose settings do not change keeps all its bytes.
// In an area with slots of size 0, unused bytes have fixed values.
struct Area {
    KeyboardModuleIDs module;
    Long size; // in bytes; 0: the control's TransferSize
    Long slotSize;
    bool required = true;                   // without it the keyboard does not have the section
    Long fixedAddress = -1;                 // for an area that is not in the directory
    KeyboardModuleIDs requestedAs = module; // the id the device requires for its address
    Long offset = 0;                        // from the module's base
};

struct SectionInfo {
    std::string_view key;   // its name in the document
    std::string_view title; // in English; the names of its settings begin with it
    std::span<const Area> areas;
    std::string_view list = {}; // of its keys or blocks, which have a sequence each
};

class Section {
public:
    virtual ~Section() = default;

    [[nodiscard]] virtual const SectionInfo& Info() const = 0;
    [[nodiscard]] virtual ModuleControl& Control() = 0;
    // Walks the settings. A visitor that reads changes them; the caller then shows the control.
    virtual void Visit(FieldVisitor& fields) = 0;
    // Whether the keyboard has an area that is not required. The settings of a missing area are
    // omitted when a document is written; when one is read, they are an error, or ignored if fSkip.
    virtual void NoteArea(KeyboardModuleIDs /*eModule*/, bool /*fPresent*/, bool /*fSkip*/) {}
    // What the section has for a key sheet.
    virtual void VisitSheet(SheetVisitor& /*sheet*/) const {}
    // Whether a download leaves this area unchanged because it is not in the document.
    [[nodiscard]] virtual bool Keeps(KeyboardModuleIDs /*eModule*/) const { return false; }
    // Whether the control sets DataChanged at every edit.
    [[nodiscard]] virtual bool MarksEdits() const { return true; }
    // Adds what the section has for the key with this position code.
    virtual void AddTo(KeyModules& /*modules*/, Integer /*nPositionCode*/) {}
    // An element of a list, which may have no content yet, is about to get a sequence.
    virtual void Begin(const FieldList::Id& /*element*/) {}
    // An element is about to lose its sequence.
    virtual void End(const FieldList::Id& /*element*/) {}
    // Called when the section's settings have been read from a keyboard.
    virtual void Uploaded() {}
    // The first byte of an area that no document can express, and the kind of fault; `arguments`
    // follow the address.
    struct Damage {
        Long offset;
        json::FaultKind kind;
        std::vector<std::string> arguments;
    };
    [[nodiscard]] virtual std::optional<Damage> DamageIn(KeyboardModuleIDs /*eModule*/,
                                                         std::string_view /*bytes*/) const {
        return std::nullopt;
    }
    // The places of the settings that depend on a stretch of an area that is one slot: a setting
    // may then need bytes from all over it. `bytes` are the whole area's.
    [[nodiscard]] virtual std::set<std::string> PlacesIn(Long /*offset*/, Long /*size*/,
                                                         std::string_view /*bytes*/) const {
        return {};
    }

    // For an area that is one slot: `held` are its bytes in the keyboard, `usual` the same settings
    // as encoded by the control. In the parts of `wanted` that equal `usual` and have the same
    // meaning in `held`, copies the bytes of `held`, so that unused bytes stay unchanged.
    virtual void KeepUnused(std::string_view /*held*/, std::string_view /*usual*/,
                            std::string& /*wanted*/) const {}

    // Makes the control show its settings.
    void Show() {
        Control().AdjustControls();
        Control().ReloadKeySettings();
    }
};

// A section that owns its control of type C.
template <typename C>
class SectionOf : public Section {
public:
    SectionOf(const SectionInfo& info, const Platform& platform)
        : m_info(info), m_control(platform) {}

    [[nodiscard]] const SectionInfo& Info() const override { return m_info; }
    [[nodiscard]] C& Control() override { return m_control; }
    [[nodiscard]] const C& Control() const { return m_control; }

private:
    const SectionInfo& m_info;
    C m_control;
};

} // namespace qx::host
