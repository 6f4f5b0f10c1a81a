// Section: the settings of one module control, as the configuration document has them.
//
// A section owns its control, knows which modules of the keyboard hold its settings, and describes
// these settings as a walk. The host drives all sections alike.
#pragma once

#include "host/FieldVisitor.h"
#include "qxcontrols/device/ModuleControl.h"

#include <memory>
#include <span>
#include <string_view>

namespace qx::host {

// A stretch of the keyboard's memory in which a section keeps settings.
struct Area {
    KeyboardModuleIDs module;
    Long size; // bytes that the control uses, from its base; 0: the control's TransferSize
    bool required = true;                   // without it the keyboard does not have the section
    Long fixedAddress = -1;                 // where the area lies, when the directory does not tell
    KeyboardModuleIDs requestedAs = module; // the id with which the device expects its address
};

struct SectionInfo {
    std::string_view key;   // its name in the document
    std::string_view title; // its name for people, with which the names of its settings begin
    std::span<const Area> areas;
};

class Section {
public:
    virtual ~Section() = default;

    [[nodiscard]] virtual const SectionInfo& Info() const = 0;
    [[nodiscard]] virtual ModuleControl& Control() = 0;
    // Walks the settings. A visitor that reads changes them; the caller then shows the control.
    virtual void Visit(FieldVisitor& fields) = 0;
    // Tells the section that the keyboard lacks an area that is not required: its settings are not
    // written into documents, and refused in those that are read, or passed over with fSkip.
    virtual void LacksArea(KeyboardModuleIDs /*eModule*/, bool /*fSkip*/) {}
    // Whether a download is to leave this area as it is, because the document does not speak of it.
    [[nodiscard]] virtual bool Keeps(KeyboardModuleIDs /*eModule*/) const { return false; }
    // Tells the section that its settings have been read from a keyboard.
    virtual void Uploaded() {}

    // Has the control show the settings that it holds.
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

private:
    const SectionInfo& m_info;
    C m_control;
};

} // namespace qx::host
