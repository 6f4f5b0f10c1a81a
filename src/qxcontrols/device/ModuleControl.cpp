#include "qxcontrols/device/ModuleControl.h"

#include "qxcontrols/device/QXKeyboardAccess.h"

namespace qx {

ModuleControl::ModuleControl(std::string_view sName, KeyboardModuleIDs eModule,
                             const Platform& platform)
    : m_name(sName), m_platform(platform), m_configId(eModule) {
    TraceNamed(".UserControl_Initialize");
}

ModuleControl::~ModuleControl() {
    TraceNamed(".UserControl_Terminate");
}

void ModuleControl::SetKeyboard(QXKeyboardAccess* keyboard) {
    m_keyboard = keyboard;
    TraceAssignment("Keyboard", "QXKeyboardAccess", keyboard != nullptr);
    KeyboardAssigned();
}

void ModuleControl::SetLayoutSource(QXKeyboardLayoutData* layout) {
    m_layout = layout;
    TraceAssignment("LayoutSource", "QXKeyboardLayoutData", layout != nullptr);
    LayoutSourceAssigned();
}

void ModuleControl::SetPrefSource(QXProgSettings* preferences) {
    m_preferences = preferences;
    TraceAssignment("PrefSource", "QXProgSettings", preferences != nullptr);
    PrefSourceAssigned();
}

void ModuleControl::Translate() {
    TraceNamed(".Translate");
    Refreshed.Raise();
}

void ModuleControl::AdjustControls() {
    TraceNamed(".AdjustControls");
    Refreshed.Raise();
}

void ModuleControl::ReloadKeySettings() {
    TraceNamed(".ReloadKeySettings");
    Refreshed.Raise();
}

void ModuleControl::ReloadColor() {
    TraceNamed(".ReloadColor");
    Refreshed.Raise();
}

std::string ModuleControl::AssignmentText(std::string_view sProperty,
                                          std::string_view sType) const {
    return std::string(sProperty) + " As " + std::string(sType);
}

void ModuleControl::TraceAssignment(std::string_view sProperty, std::string_view sType,
                                    bool fGiven) const {
    TraceNamed(".Set " + AssignmentText(sProperty, sType) + ": ==> " + (fGiven ? " 1" : " 0"));
}

void ModuleControl::TraceNamed(std::string_view sText) const {
    Trace(m_name + std::string(sText));
}

Long ModuleControl::BaseAddress(KeyboardModuleIDs eModule) const {
    return m_keyboard != nullptr ? m_keyboard->GetBaseAddressForModule(eModule) : -1;
}

} // namespace qx
