#include "qxcontrols/pos/frmPOSProgrammer.h"

#include "qxcontrols/common/Trace.h"
#include "qxcontrols/keys/KeyName.h"
#include "qxcontrols/keys/QXKeyboardLayoutData.h"
#include "qxcontrols/keys/SequenceCaption.h"
#include "qxcontrols/pos/POSBlockPlaces.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/pos/QXPOSProgrammer.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>

namespace qx {

namespace {

constexpr Integer kFirstKey = 1;
constexpr Integer kLastKey = POSKeyboard::kSlots;

bool IsKey(Integer nKey) {
    return nKey >= kFirstKey && nKey <= kLastKey;
}

std::optional<Integer> BlockIDFrom(std::string_view sText) {
    int number = 0;
    const auto [end, error] = std::from_chars(sText.data(), sText.data() + sText.size(), number);
    if (error != std::errc() || end != sText.data() + sText.size() || number < 0 ||
        number > std::numeric_limits<Integer>::max())
        return std::nullopt;
    return static_cast<Integer>(number);
}

} // namespace

frmPOSProgrammer::frmPOSProgrammer() {
    m_keyClicked =
        posDisplay.KeyClicked.Subscribe([this](Integer nKey) { posDisplay_KeyClicked(nKey); });
}

void frmPOSProgrammer::SetPosData(const POSKeyboard& data) {
    m_posData = InTheirSlots(data);
    m_undo.clear();
    m_isUndoCut = false;
    m_numberedBlock = 0;
    m_currBlock = 0;
    m_ok = false;
}

void frmPOSProgrammer::SetCurrBlock(Integer nSlot) {
    m_currBlock = IsKey(nSlot) && m_posData.Block(nSlot).BlockSize() > 0 ? nSlot : Integer{0};
    Show();
}

POSBlock* frmPOSProgrammer::Current() {
    return m_currBlock == 0 ? nullptr : &m_posData.Block(m_currBlock);
}

std::string frmPOSProgrammer::KeyLabel(Integer nKey) const {
    return IsKey(nKey) ? qx::KeyLabel(m_codeMap.GetPositionCodeForKey(nKey), m_layout)
                       : std::string();
}

const KeySequence* frmPOSProgrammer::SequenceOf(Integer nKey) const {
    const Integer slot = m_posData.FindBlockForKey(nKey);
    return slot == 0 ? nullptr : &m_posData.Block(slot).Sequence();
}

std::string frmPOSProgrammer::SentBy(Integer nKey) const {
    const KeySequence* sequence = SequenceOf(nKey);
    return sequence == nullptr ? std::string() : TextOf(*sequence);
}

std::string frmPOSProgrammer::TextOf(const KeySequence& sequence) const {
    return SequenceCaption(sequence, m_layout,
                           m_preferences != nullptr && m_preferences->ShowUpcodes());
}

// Clicks on keys.

void frmPOSProgrammer::posDisplay_KeyClicked(Integer nKey) {
    if (!IsKey(nKey))
        return;
    Trace("[frmPOSProgrammer].posDisplay_KeyClicked(" + std::to_string(nKey) + ")");
    const Integer slot = m_posData.FindBlockForKey(nKey);
    if (slot == 0 && m_currBlock == 0) {
        StartBlock(nKey);
    } else if (slot == 0) {
        MoveKeyHere(nKey, slot);
    } else if (slot != m_currBlock) {
        m_currBlock = slot;
    } else if (MayLose(nKey, slot)) {
        Remember();
        const POSBlock& block = m_posData.Block(slot);
        const Integer other = block.GetKey(block.GetKey(1) == nKey ? 2 : 1);
        SplitKeys(m_posData, {nKey});
        m_currBlock = m_posData.FindBlockForKey(other);
    }
    Show();
}

void frmPOSProgrammer::ReachKey(Integer nKey) {
    if (const Integer slot = m_posData.FindBlockForKey(nKey); IsKey(nKey) && slot != m_currBlock)
        SetCurrBlock(slot);
}

void frmPOSProgrammer::TakeKey(Integer nKey) {
    const Integer slot = m_posData.FindBlockForKey(nKey);
    if (m_currBlock == 0 || slot == 0 || slot == m_currBlock)
        return posDisplay_KeyClicked(nKey);
    Trace("[frmPOSProgrammer].TakeKey(" + std::to_string(nKey) + ")");
    MoveKeyHere(nKey, slot);
    Show();
}

void frmPOSProgrammer::StartBlock(Integer nKey) {
    Remember();
    m_currBlock = qx::StartBlock(m_posData, {nKey});
}

void frmPOSProgrammer::MoveKeyHere(Integer nKey, Integer nFromSlot) {
    if (nFromSlot != 0 && !MayLose(nKey, nFromSlot))
        return;
    Remember();
    const Integer own = Current()->GetKey(1);
    SplitKeys(m_posData, {nKey});
    if (JoinKeys(m_posData, {own, nKey}))
        m_currBlock = m_posData.FindBlockForKey(nKey);
}

// Whether the block in the slot may lose the key, which may be its only one.
bool frmPOSProgrammer::MayLose(Integer nKey, Integer nSlot) const {
    const POSBlock& block = m_posData.Block(nSlot);
    return block.BlockSize() > 1 || !block.HasKey(nKey) || MayRemove(nSlot);
}

bool frmPOSProgrammer::MayRemove(Integer nSlot) const {
    const POSBlock& block = m_posData.Block(nSlot);
    bool fCancelRemoving = block.Sequence().Length() > 0;
    if (fCancelRemoving && m_parent != nullptr)
        m_parent->RemoveBlock.Raise(block.BlockID(), fCancelRemoving);
    return !fCancelRemoving;
}

// Events of the other children.

void frmPOSProgrammer::lstBlocks_Click() {
    Integer row = 0;
    for (Integer slot = kFirstKey; slot <= kLastKey; ++slot)
        if (m_posData.Block(slot).BlockSize() > 0 && row++ == lstBlocks.ListIndex) {
            SetCurrBlock(slot);
            return;
        }
    SetCurrBlock(0);
}

void frmPOSProgrammer::cmdNewBlock_Click() {
    SetCurrBlock(0);
}

void frmPOSProgrammer::txtBlockID_Change() {
    const std::optional<Integer> id = BlockIDFrom(txtBlockID.Text);
    if (m_currBlock == 0 || !id || *id == Current()->BlockID())
        return;
    if (m_numberedBlock != m_currBlock)
        Remember();
    m_numberedBlock = m_currBlock;
    Current()->SetBlockID(*id);
    Show();
}

void frmPOSProgrammer::cmdColor_Click(Integer Index) {
    if (m_currBlock == 0 || Index < 0 || Index >= kColors)
        return;
    Remember();
    Current()->SetColorID(Index);
    Show();
}

void frmPOSProgrammer::cmdEdit_Click() {
    Trace("[frmPOSProgrammer].cmdEdit_Click");
    if (m_currBlock == 0 || m_parent == nullptr)
        return;
    const std::string current = Current()->Sequence().KeyString();
    bool fCancelEdit = true;
    std::string edited = current;
    m_parent->EditSequence.Raise(m_codeMap.GetPositionCodeForKey(m_currBlock), current, fCancelEdit,
                                 edited);
    if (fCancelEdit || m_currBlock == 0)
        return;
    constexpr std::size_t kMost = std::size_t{kPOSSequenceSize} * KeySequence::kFieldWidth;
    Remember();
    Current()->Sequence().SetKeyString(edited.substr(0, kMost));
    Show();
}

void frmPOSProgrammer::cmdClean_Click(Integer Index) {
    Trace("[frmPOSProgrammer].cmdClean_Click(" + std::to_string(Index) + ")");
    if (Index == 0) {
        if (m_currBlock == 0 || !MayRemove(m_currBlock))
            return;
        Remember();
        FreeSlot(m_posData, m_currBlock);
    } else {
        bool fCancelRemoving = true;
        if (m_parent != nullptr)
            m_parent->RemoveAllBlocks.Raise(fCancelRemoving);
        if (fCancelRemoving)
            return;
        Remember();
        m_posData = {};
    }
    SetCurrBlock(0);
}

// Called before each change.
void frmPOSProgrammer::Remember() {
    constexpr std::size_t kMostKept = 100;
    if (m_undo.size() == kMostKept) {
        m_undo.erase(m_undo.begin());
        m_isUndoCut = true;
    }
    m_undo.push_back({m_posData, m_currBlock});
    m_numberedBlock = 0;
}

void frmPOSProgrammer::cmdUndo_Click() {
    Trace("[frmPOSProgrammer].cmdUndo_Click");
    if (m_undo.empty())
        return;
    m_posData = std::move(m_undo.back().posData);
    m_currBlock = m_undo.back().currBlock;
    m_undo.pop_back();
    m_numberedBlock = 0;
    Show();
}

void frmPOSProgrammer::imgHelp_Click() {
    if (m_parent != nullptr)
        m_parent->UserNeedsHelp.Raise();
}

void frmPOSProgrammer::LeaveWithOK() {
    Trace("[frmPOSProgrammer].LeaveWithOK");
    m_ok = true;
    Closed.Raise();
}

void frmPOSProgrammer::LeaveWithCancel() {
    Trace("[frmPOSProgrammer].LeaveWithCancel");
    m_ok = false;
    Closed.Raise();
}

// Display.

void frmPOSProgrammer::PrepareDisplay() {
    ShowTexts();
    Show();
}

void frmPOSProgrammer::ShowTexts() {
    if (m_parent == nullptr)
        return;
    m_parent->ButtonOK().ShowOn(cmdOK);
    m_parent->ButtonCancel().ShowOn(cmdCancel);
    m_parent->ButtonNewBlock().ShowOn(cmdNewBlock);
    m_parent->ButtonEdit().ShowOn(cmdEdit);
    m_parent->ButtonClean().ShowOn(cmdClean[0]);
    m_parent->ButtonCleanAll().ShowOn(cmdClean[1]);
    lblCaption.Caption = m_parent->ProgrammerCaption();
    lblNumBlocks.Caption = m_parent->NumBlocksCaption();
    lblBlockID.Caption = m_parent->BlockIDCaption();
    lblKeys.Caption = m_parent->KeysCaption();
    lblColor.Caption = m_parent->ColorCaption();
    lblSequence.Caption = m_parent->SequenceCaption();
}

void frmPOSProgrammer::Show() {
    m_posData.CalcDefinedBlockNum();
    posDisplay.PaintTogether([this] { PaintKeys(); });
    ShowBlockList();
    ShowCurrentBlock();
    Refreshed.Raise();
}

void frmPOSProgrammer::ShowBlockList() {
    lstBlocks = {};
    Integer freeKeys = kLastKey;
    for (Integer slot = kFirstKey; slot <= kLastKey; ++slot) {
        const POSBlock& block = m_posData.Block(slot);
        if (block.BlockSize() == 0)
            continue;
        freeKeys = static_cast<Integer>(freeKeys - block.BlockSize());
        if (slot == m_currBlock)
            lstBlocks.ListIndex = static_cast<Integer>(lstBlocks.Items.size());
        lstBlocks.Items.push_back(std::to_string(block.BlockID()) + ": " + KeyNames(block));
    }
    lblBlockNum.Caption = std::to_string(m_posData.BlockNum());
    lblFreeKeys.Caption = std::to_string(freeKeys);
    cmdClean[1].Enabled = !lstBlocks.Items.empty();
    cmdUndo.Enabled = !m_undo.empty();
}

void frmPOSProgrammer::ShowCurrentBlock() {
    const POSBlock* block = Current();
    const bool hasBlock = block != nullptr;
    cmdNewBlock.Enabled = txtBlockID.Enabled = cmdEdit.Enabled = cmdClean[0].Enabled = hasBlock;
    txtBlockID.Text = hasBlock ? std::to_string(block->BlockID()) : std::string();
    lblCurrKeys.Caption = hasBlock ? KeyNames(*block) : std::string();
    for (Integer color = 0; color < kColors; ++color) {
        ColorButton& button = cmdColor[static_cast<std::size_t>(color)];
        button.BackColor = ColorOfBlock(color);
        button.IsSelected = hasBlock && block->ColorID() == color;
        button.Enabled = hasBlock;
    }
    lblCurrSeq.Caption = hasBlock ? TextOf(block->Sequence()) : std::string();
    lblRemaining.Caption =
        hasBlock ? std::to_string(std::max(0, kPOSSequenceSize - block->Sequence().Length()))
                 : std::string();
}

void frmPOSProgrammer::PaintKeys() {
    const Long colorUnused = m_preferences != nullptr
                                 ? m_preferences->POSColorUnused()
                                 : InfoOf(Preference::POSColorUnused).loadDefault;
    const Long colorCurrent = m_preferences != nullptr
                                  ? m_preferences->POSColorCurrent()
                                  : InfoOf(Preference::POSColorCurrent).loadDefault;
    for (Integer key = kFirstKey; key <= kLastKey; ++key) {
        const Integer slot = m_posData.FindBlockForKey(key);
        if (slot == 0) {
            posDisplay.SetAsUnused(key, colorUnused);
            continue;
        }
        const POSBlock& block = m_posData.Block(slot);
        const bool isCurrent = slot == m_currBlock;
        posDisplay.SetKeyColor(key, isCurrent ? colorCurrent : ColorOfBlock(block.ColorID()));
        if (isCurrent && key == slot)
            posDisplay.SetAsCurrentCaption(key, std::to_string(block.BlockID()), {});
        else
            posDisplay.SetKeyCaption(key, std::to_string(block.BlockID()), {});
    }
}

Long frmPOSProgrammer::ColorOfBlock(Integer nColorID) const {
    if (m_preferences != nullptr)
        return m_preferences->POSColorBlock(nColorID);
    return InfoOf(Preference::POSColorBlock0).loadDefault;
}

std::string frmPOSProgrammer::KeyNames(const POSBlock& block) const {
    std::string names;
    for (const Integer key : KeysOf(block))
        names += (names.empty() ? "" : ", ") + KeyName(key, KeyLabel(key));
    return names;
}

} // namespace qx
