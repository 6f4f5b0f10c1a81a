// QXFreeProgKeys: the control for the keys that can each have their own sequence.
//
// The control owns a sequence for every key id and shows the keys on a layout display, on which the
// user picks the current key. ReloadKeysSettings must be called after the layout is known and
// before any transfer: it determines the participating keys. ConfigID is initially
// MODULE_FREEPROGRAMMABLE_KEYS; other modules with such a block are supported too, and
// MODULE_FUNCKEYS_X1_4620 stores its keys in its own order. For keys that are counted but
// have no place in the block (id 0, or keys that the 4620 does not have), the end of the block is
// filled with spaces.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/keys/KeyboardSequences.h"
#include "qxcontrols/keys/QXLayoutDisplay.h"

#include <array>

namespace qx {

class QXFreeProgKeys : public ModuleControl {
public:
    static constexpr Integer kNoKey = -1;

    explicit QXFreeProgKeys(const Platform& platform = {});

    // Removals are carried out unless the host refuses: fRemoveIt is preset to True.
    Event<bool&> RemoveAllSequences; // fRemoveIt
    Event<bool&> RemoveSequence;     // fRemoveIt
    // nPosCode, sOutSeq, fCancelEdit, sInSeq. Preset to False and to the current sequence: unless
    // the host cancels, the sequence counts as edited, even if the host does not answer.
    Event<Integer, const std::string&, bool&, std::string&> EditSequence;
    Event<Integer> KeyNoEditable; // nPositionCode; kNoKey if no key is picked
    Event<bool&> AdvanceEdit;     // fEdit, preset to False

    // The instance name at the start of the trace lines; initially the class name.
    using ModuleControl::Name;
    using ModuleControl::SetName;

    using ModuleControl::LayoutSource;

    // The sequences by key id. The control sets each one's position code: the key's id if it is
    // programmable, otherwise -1. Call ReloadKeysSettings after changing one.
    [[nodiscard]] KeyboardSequences& Sequences() { return m_sequences; }
    [[nodiscard]] const KeyboardSequences& Sequences() const { return m_sequences; }
    [[nodiscard]] Integer CurrentKey() const { return m_key; } // kNoKey if none

    // Looks up again which keys the layout marks as programmable, and displays all keys. Without a
    // layout none is programmable.
    void ReloadKeysSettings();
    void KeyFontSizeChanged(Integer nNewSize);

    // Texts, shown by the next Translate.
    [[nodiscard]] ButtonCaption& ButtonEdit() { return m_buttons[0]; }
    void SetButtonEdit(const ButtonCaption& caption) { m_buttons[0] = caption; }
    [[nodiscard]] ButtonCaption& ButtonClean() { return m_buttons[1]; }
    void SetButtonClean(const ButtonCaption& caption) { m_buttons[1] = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanAll() { return m_buttons[2]; }
    void SetButtonCleanAll(const ButtonCaption& caption) { m_buttons[2] = caption; }
    [[nodiscard]] const std::string& SequenceForCurrKey() const { return m_sequenceCaption; }
    void SetSequenceForCurrKey(std::string sText) { m_sequenceCaption = std::move(sText); }
    [[nodiscard]] const std::string& ShowDetails() const { return m_showDetails; }
    void SetShowDetails(std::string sText) { m_showDetails = std::move(sText); }

    // A slot for every programmable key.
    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    // Empties all sequences.
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    void DataDownload(bool LoadInKeyboard) override;
    void Translate() override;
    void ReloadKeySettings() override { ReloadKeysSettings(); }
    void ReloadColor() override;

    QXLayoutDisplay layoutDisplay;
    Label lblSequence;             // SequenceForCurrKey
    Label lblCurrSeq;              // the current key's sequence as text
    CheckBox chkShowDetails;       // whether that text includes the releases of keys
    std::array<Button, 3> cmdEdit; // 0 edit, 1 clean, 2 clean all

    void cmdEdit_Click(Integer Index);
    void chkShowDetails_Click();
    void lblCurrSeq_KeyPress();

protected:
    void LayoutSourceAssigned() override;
    void PrefSourceAssigned() override;

private:
    [[nodiscard]] Long BlockSize() const;
    [[nodiscard]] bool IsProgrammable(Long lID) const;
    void PickKey(Long lPositionCode);
    void Edit();
    void Clean();
    void CleanAll();
    void ShowKeys();
    void ShowCurrentSequence();
    void TraceIn(std::string_view sProcedure, std::string_view sText) const;

    KeyboardSequences m_sequences;
    Long m_programmableKeys = 0;
    Integer m_key = kNoKey;
    std::array<ButtonCaption, 3> m_buttons;
    std::string m_sequenceCaption;
    std::string m_showDetails;
    Subscription m_keyClicked; // must end before the display does
};

} // namespace qx
