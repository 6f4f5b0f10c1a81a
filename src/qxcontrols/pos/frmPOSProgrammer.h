// frmPOSProgrammer: the window in which the user puts the POS keys together as blocks.
//
// The form edits a copy of the model. At most one block is current. A click
// - on a key of another block makes that block current;
// - on a free key starts a new block with it, or adds it to the current block;
// - on a key of the current block removes it.
// Only TakeKey moves a key from another block. A key is therefore in at most one block. A block's
// major key is its lowest, whichever was picked first, and the block is in that key's slot (see
// POSBlockPlaces.h): it moves when a lower key joins or the major key leaves. A block without keys
// is removed; the host is asked before a sequence is lost. Texts and events to the host are those
// of the QXPOSProgrammer that opened the form.
#pragma once

#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "qxcontrols/pos/QXPosDisplay.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace qx {

class QXKeyboardLayoutData;
class QXPOSProgrammer;
class QXProgSettings;

struct ColorButton : Button {
    Long BackColor = 0;      // a Windows colour value, as the preferences have them
    bool IsSelected = false; // the current block's
};

class frmPOSProgrammer {
public:
    static constexpr Integer kColors = POSBlock::kColors;

    frmPOSProgrammer();
    frmPOSProgrammer(const frmPOSProgrammer&) = delete;
    frmPOSProgrammer& operator=(const frmPOSProgrammer&) = delete;

    // Raised once after any change of what the form shows, and when the user leaves it.
    Event<> Refreshed;
    Event<> Closed;

    // The layout in use; null for none.
    [[nodiscard]] const QXKeyboardLayoutData* LayoutSource() const { return m_layout; }
    void SetLayoutSource(QXKeyboardLayoutData* layout) { m_layout = layout; }
    void SetPrefSource(const QXProgSettings* preferences) { m_preferences = preferences; }
    void SetParentProgrammer(QXPOSProgrammer* parent) { m_parent = parent; }

    // The blocks being edited. A copy is taken, with every block in its slot.
    [[nodiscard]] const POSKeyboard& PosData() const { return m_posData; }
    void SetPosData(const POSKeyboard& data);
    // Whether the user left with OK.
    [[nodiscard]] bool OK() const { return m_ok; }

    // The current block's slot, which is its major key; 0 for none. A free slot, or a number
    // that is not a slot's, selects none.
    [[nodiscard]] Integer CurrBlock() const { return m_currBlock; }
    void SetCurrBlock(Integer nSlot);
    // The key's label in the layout; empty if it has none.
    [[nodiscard]] std::string KeyLabel(Integer nKey) const;
    // The sequence of the key's block; null for a key in no block. Good until the next change.
    [[nodiscard]] const KeySequence* SequenceOf(Integer nKey) const;
    // The same as text; nothing for a key in no block.
    [[nodiscard]] std::string SentBy(Integer nKey) const;

    // The user has moved to a key without a click: the key's block becomes the current one, none
    // when the key is free. Clear therefore acts on the focused key.
    void ReachKey(Integer nKey);
    // Takes the key into the current block, also out of another; without a current block, or for a
    // key that is in it, the same as a click.
    void TakeKey(Integer nKey);
    // Whether anything has been changed and not been undone.
    [[nodiscard]] bool IsChanged() const { return !m_undo.empty() || m_isUndoCut; }

    // Shows the parent's texts and the blocks.
    void PrepareDisplay();
    void LeaveWithOK();
    void LeaveWithCancel();

    Label lblCaption; // the form's title
    QXPosDisplay posDisplay;
    Label lblNumBlocks, lblBlockNum; // their number
    Label lblFreeKeys;               // how many keys are in no block
    ListBox lstBlocks;               // in the order of their slots
    Button cmdNewBlock;
    // The current block. Without one, these are not enabled.
    Label lblBlockID, lblKeys, lblColor, lblSequence; // the captions beside them
    TextBox txtBlockID;
    Label lblCurrKeys; // the names of its keys, the major key first
    std::array<ColorButton, kColors> cmdColor;
    Label lblCurrSeq;               // its sequence as text
    Label lblRemaining;             // how many codes still fit
    Button cmdEdit;                 // its sequence
    std::array<Button, 2> cmdClean; // 0 remove the current block, 1 all blocks
    Button cmdUndo;                 // the last change
    Button cmdOK, cmdCancel;

    void lstBlocks_Click();
    void cmdNewBlock_Click();
    void txtBlockID_Change(); // any text but a number from 0 to 32767 changes nothing
    void cmdColor_Click(Integer Index);
    void cmdEdit_Click();
    void cmdClean_Click(Integer Index);
    void cmdOK_Click() { LeaveWithOK(); }
    void cmdCancel_Click() { LeaveWithCancel(); }
    void cmdUndo_Click();
    void imgHelp_Click();

private:
    // A step of the undo history.
    struct State {
        POSKeyboard posData;
        Integer currBlock;
    };

    void Remember();
    void posDisplay_KeyClicked(Integer nKey);
    void StartBlock(Integer nKey);
    void MoveKeyHere(Integer nKey, Integer nFromSlot);
    [[nodiscard]] bool MayLose(Integer nKey, Integer nSlot) const;
    [[nodiscard]] bool MayRemove(Integer nSlot) const;
    [[nodiscard]] POSBlock* Current();
    [[nodiscard]] Long ColorOfBlock(Integer nColorID) const;
    [[nodiscard]] std::string TextOf(const KeySequence& sequence) const;
    [[nodiscard]] std::string KeyNames(const POSBlock& block) const;

    void Show();
    void ShowTexts();
    void ShowBlockList();
    void ShowCurrentBlock();
    void PaintKeys();

    QXKeyboardLayoutData* m_layout = nullptr;
    const QXProgSettings* m_preferences = nullptr;
    QXPOSProgrammer* m_parent = nullptr;
    POSKeyboard m_posData;
    POSCodeMapping m_codeMap;
    Integer m_currBlock = 0;
    Integer m_numberedBlock = 0; // whose id the last change was; further ones belong to it
    bool m_ok = false;
    std::vector<State> m_undo; // the latest last
    bool m_isUndoCut = false;  // there were more changes than are kept
    Subscription m_keyClicked; // ends before the display
};

} // namespace qx
