// QXPos: the control for the POS module, whose keys act together as blocks.
//
// The control owns the model and shows it on a key grid; the blocks are edited in the POS
// programmer, which the host opens when the control requests it. Transfers do not depend on
// LoadInKeyboard. An upload replaces the whole model; it ends at a group number above 105, which no
// download writes: the keys before it stay uploaded, the others are free, and the number of blocks
// and the grid are not updated. A model with a key that the module does not have, or with a code
// other than -1 and 0 to 255 among the first 31 of a block's sequence, is not downloaded. Setting a
// model or code map copies it.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/pos/POSCodeMapping.h"
#include "qxcontrols/pos/POSKeyboard.h"
#include "qxcontrols/pos/QXPosDisplay.h"

namespace qx {

class QXPos : public ModuleControl {
public:
    explicit QXPos(const Platform& platform = {});

    // Requests the POS programmer, or permission to remove all blocks. The flags are preset to
    // True: without an answer nothing changes. The host opens the programmer itself and sets
    // fCancelEdit to False if that has changed PosData.
    Event<bool&> POSEditorRequested; // fCancelEdit
    Event<bool&> RemoveAllBlocks;    // fCancelRemoving

    using ModuleControl::LayoutSource;

    // The model. Call CalcDefinedBlockNum and ReloadKeySettings after changing it in place.
    [[nodiscard]] POSKeyboard& PosData() { return m_posData; }
    [[nodiscard]] const POSKeyboard& PosData() const { return m_posData; }
    void SetPosData(const POSKeyboard& data);
    // Maps the grid's key indexes to the layout's position codes.
    [[nodiscard]] POSCodeMapping& CodeMap() { return m_codeMap; }
    [[nodiscard]] const POSCodeMapping& CodeMap() const { return m_codeMap; }
    void SetCodeMap(const POSCodeMapping& map) { m_codeMap = map; }

    // Texts, shown by the next Translate.
    [[nodiscard]] const std::string& NumBlocksCaption() const { return m_numBlocksCaption; }
    void SetNumBlocksCaption(std::string sCaption) { m_numBlocksCaption = std::move(sCaption); }
    [[nodiscard]] ButtonCaption& ButtonEdit() { return m_buttonEdit; }
    void SetButtonEdit(const ButtonCaption& caption) { m_buttonEdit = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanAll() { return m_buttonCleanAll; }
    void SetButtonCleanAll(const ButtonCaption& caption) { m_buttonCleanAll = caption; }

    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    // Removes all blocks.
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    void DataDownload(bool LoadInKeyboard) override;
    void Translate() override;
    // Both paint the grid from the model: every key with its block's id and colour.
    void ReloadKeySettings() override;
    void ReloadColor() override;

    QXPosDisplay posDisplay;
    Label lblNumBlocks; // NumBlocksCaption
    Label lblBlockNum;  // the number of blocks
    Button cmdEdit;
    Button cmdCleanAll;

    void cmdEdit_Click();
    void cmdCleanAll_Click();

protected:
    void PrefSourceAssigned() override;
    [[nodiscard]] std::string AssignmentText(std::string_view sProperty,
                                             std::string_view sType) const override;

private:
    void QueueBlock();
    void PaintKeys();
    void PaintBlock(const POSBlock& block, Long lColor);
    void ShowBlocks();

    POSKeyboard m_posData;
    POSCodeMapping m_codeMap;
    std::string m_numBlocksCaption;
    ButtonCaption m_buttonEdit;
    ButtonCaption m_buttonCleanAll;
};

} // namespace qx
