// ModuleControl: the contract of all controls that own a block of the keyboard's memory.
//
// The host assigns the shared services, which stay alive as long as the control, and drives all
// controls alike, on one thread. An upload, from the keyboard to the PC:
//
//     keyboard.DataTransferPrepare();
//     control.PrepareDataUpload(true);   // requests the control's areas; for every control
//     if (keyboard.Upload() == 0)        // from the keyboard into the image
//         control.DataUpload(true);      // from the image into the settings; for every control
//     keyboard.DataTransferFixUp();
//
// A download, from the PC to the keyboard, fills the image first:
//
//     keyboard.DataTransferPrepare();
//     control.DataDownload(true);
//     control.PrepareDataDownload(true);
//     const Long status = keyboard.Download();
//     keyboard.DataTransferFixUp();
//
// A control transfers nothing if the keyboard does not have its module. No member reports failure
// to its caller: it writes a trace line and, where documented, shows a message box. A host that
// must be sure reads the keyboard back. A member throws for an index out of range only where
// documented; exceptions of the host's handlers are passed back to the host.
#pragma once

#include "qxcontrols/common/Event.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/KeyboardModuleIDs.h"
#include "qxcontrols/platform/Platform.h"

#include <string>
#include <string_view>

namespace qx {

class QXKeyboardAccess;
class QXKeyboardLayoutData;
class QXProgSettings;

class ModuleControl {
public:
    virtual ~ModuleControl();
    ModuleControl(const ModuleControl&) = delete;
    ModuleControl& operator=(const ModuleControl&) = delete;

    // Raised once after any change of the display, when all child controls are up to date: a view
    // then copies them to its widgets. Changes that the host makes in place, such as to the codes
    // of a sequence, are not noticed: AdjustControls or ReloadKeySettings, depending on the
    // control, displays them and raises this.
    Event<> Refreshed;

    // The shared services; null clears. The keyboard is required before any transfer, the layout
    // for the names of keys; without preferences their defaults apply.
    [[nodiscard]] QXKeyboardAccess* Keyboard() const { return m_keyboard; }
    void SetKeyboard(QXKeyboardAccess* keyboard);
    void SetLayoutSource(QXKeyboardLayoutData* layout);
    void SetPrefSource(QXProgSettings* preferences);

    // The module that the control is for.
    [[nodiscard]] KeyboardModuleIDs ConfigID() const { return m_configId; }
    void SetConfigID(KeyboardModuleIDs eModule) { m_configId = eModule; }

    // Set by the control when its settings are edited; reset by the host.
    [[nodiscard]] bool DataChanged() const { return m_dataChanged; }
    void SetDataChanged(bool fChanged) { m_dataChanged = fChanged; }

    // LoadInKeyboard is true for a transfer with the keyboard itself, and false for one with a copy
    // of its memory, which needs every byte. Only QXLayeredFuncKeys makes a difference: its
    // download into the keyboard requests only the used bytes of keys with a sequence, so a key
    // whose sequence has been removed keeps the old one there, unless the host requests its slot
    // too. All other controls transfer their whole areas either way.

    // The number of bytes in a transfer of this control, without the descriptions of keys.
    [[nodiscard]] virtual Long TransferSize(bool LoadInKeyboard) const = 0;
    // Resets all settings to the control's defaults and displays them.
    virtual void DefaultValues() = 0;
    virtual void PrepareDataUpload(bool LoadInKeyboard) = 0;
    virtual void PrepareDataDownload(bool LoadInKeyboard) = 0;
    virtual void DataUpload(bool LoadInKeyboard) = 0;
    virtual void DataDownload(bool LoadInKeyboard) = 0;

    // Update the display of texts, of the key display settings and colours in the layout and
    // preferences, or of the values. Each raises Refreshed.
    virtual void Translate();
    virtual void AdjustControls();
    virtual void ReloadKeySettings();
    virtual void ReloadColor();

protected:
    ModuleControl(std::string_view sName, KeyboardModuleIDs eModule, const Platform& platform);

    // The name at the start of the trace lines: that of the class, unless a control is given
    // another.
    [[nodiscard]] const std::string& Name() const { return m_name; }
    void SetName(std::string sName) { m_name = std::move(sName); }

    // Called after the shared service has been set.
    virtual void KeyboardAssigned() {}
    virtual void LayoutSourceAssigned() {}
    virtual void PrefSourceAssigned() {}

    // The trace text for the assignment of a service; "Keyboard As QXKeyboardAccess".
    [[nodiscard]] virtual std::string AssignmentText(std::string_view sProperty,
                                                     std::string_view sType) const;

    // Traces the name followed by the text, which includes its separator.
    void TraceNamed(std::string_view sText) const;

    // Runs a part of a procedure (".DataDownload"). An error ends the part and is traced; the
    // result is then false.
    template <typename Part>
    bool Guarded(std::string_view sProcedure, Part part) const {
        try {
            part();
            return true;
        } catch (...) {
            TraceError(m_name + std::string(sProcedure));
            return false;
        }
    }

    [[nodiscard]] QXKeyboardLayoutData* LayoutSource() const { return m_layout; }
    [[nodiscard]] QXProgSettings* PrefSource() const { return m_preferences; }
    [[nodiscard]] const Platform& Services() const { return m_platform; }

    // The module's base address; also -1 without a keyboard.
    [[nodiscard]] Long BaseAddress(KeyboardModuleIDs eModule) const;

private:
    void TraceAssignment(std::string_view sProperty, std::string_view sType, bool fGiven) const;

    std::string m_name;
    Platform m_platform;
    KeyboardModuleIDs m_configId;
    bool m_dataChanged = false;
    QXKeyboardAccess* m_keyboard = nullptr;
    QXKeyboardLayoutData* m_layout = nullptr;
    QXProgSettings* m_preferences = nullptr;
};

} // namespace qx
