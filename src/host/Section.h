// Section: the settings of one module control, as the configuration document has them.
//
// A section owns its control, knows which modules of the keyboard hold its settings, and describes
// these settings as a walk. The host drives all sections alike.
#pragma once

#include "host/FieldVisitor.h"
#include "qxcontrols/device/ModuleControl.h"

#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace qx::host {

// A stretch of the keyboard's memory in which a section keeps settings. Nothing outside the areas
// is read or written.
//
// The area consists of slots, each of which is encoded on its own and may end in bytes that no
// setting uses, such as those behind the 0 that ends a sequence. A slot whose settings do not
// change keeps all its bytes. An area with slots of size 0 has fixed values in all such bytes.
struct Area {
    KeyboardModuleIDs module;
    Long size; // in bytes; 0: the control's TransferSize
    Long slotSize;
    bool required = true;                   // without it the keyboard does not have the section
    Long fixedAddress = -1;                 // where the area lies, when the directory does not show
    KeyboardModuleIDs requestedAs = module; // the id with which the device expects its address
    Long offset = 0;                        // from the module's base
};

struct SectionInfo {
    std::string_view key;   // its name in the document
    std::string_view title; // its name in English, with which the names of its settings begin
    std::span<const Area> areas;
};

class Section {
public:
    virtual ~Section() = default;

    [[nodiscard]] virtual const SectionInfo& Info() const = 0;
    [[nodiscard]] virtual ModuleControl& Control() = 0;
    // Walks the settings. A visitor that reads changes them; the caller then shows the control.
    virtual void Visit(FieldVisitor& fields) = 0;
    // Whether the keyboard has an area that is not required. The settings of one that is missing
    // are omitted when writing a document, and on reading are an error, or ignored if fSkip.
    virtual void NoteArea(KeyboardModuleIDs /*eModule*/, bool /*fPresent*/, bool /*fSkip*/) {}
    // Whether a download leaves this area as it is, because the document does not give it.
    [[nodiscard]] virtual bool Keeps(KeyboardModuleIDs /*eModule*/) const { return false; }
    // Whether the control sets DataChanged at every edit.
    [[nodiscard]] virtual bool MarksEdits() const { return true; }
    // Called when the section's settings have been read from a keyboard.
    virtual void Uploaded() {}
    // The first byte of an area that no document can express, and why: a kind of fault, whose
    // arguments these are behind the address.
    struct Damage {
        Long offset;
        json::FaultKind kind;
        std::vector<Long> arguments;
    };
    [[nodiscard]] virtual std::optional<Damage> DamageIn(KeyboardModuleIDs /*eModule*/,
                                                         std::string_view /*bytes*/) const {
        return std::nullopt;
    }
    // The places of the settings on which a stretch of an area decides that is one slot: a setting
    // may then need bytes from all over it. `bytes` are the whole area's.
    [[nodiscard]] virtual std::set<std::string> PlacesIn(Long /*offset*/, Long /*size*/,
                                                         std::string_view /*bytes*/) const {
        return {};
    }

    // For an area that is one slot: `held` are its bytes in the keyboard, `usual` the same settings
    // as the control writes them. Gives `wanted` the bytes of `held` in those of its parts that are
    // as in `usual` and mean the same in `held`, so that bytes that no setting uses stay there.
    virtual void KeepUnused(std::string_view /*held*/, std::string_view /*usual*/,
                            std::string& /*wanted*/) const {}

    // Has the control show the settings that it holds.
    void Show() {
        Control().AdjustControls();
        Control().ReloadKeySettings();
    }
    // Has the control work with this keyboard, or with none; returns the one that it had before.
    QXKeyboardAccess* Follow(QXKeyboardAccess* keyboard) {
        Control().SetKeyboard(keyboard);
        return std::exchange(m_keyboard, keyboard);
    }

private:
    QXKeyboardAccess* m_keyboard = nullptr;
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
