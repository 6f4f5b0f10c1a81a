#include "qxcontrols/pos/QXPos.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/pos/POSModuleBlock.h"
#include "qxcontrols/settings/QXProgSettings.h"

namespace qx {

namespace {

Long ColorUnused(const QXProgSettings* preferences) {
    return preferences != nullptr ? preferences->POSColorUnused()
                                  : InfoOf(Preference::POSColorUnused).loadDefault;
}

Long ColorOfBlock(const QXProgSettings* preferences, Integer nColorID) {
    return preferences != nullptr ? preferences->POSColorBlock(nColorID)
                                  : InfoOf(Preference::POSColorBlock0).loadDefault;
}

} // namespace

QXPos::QXPos(const Platform& platform) : ModuleControl("QXPos", MODULE_POS, platform) {
    ShowBlocks();
}

void QXPos::SetPosData(const POSKeyboard& data) {
    m_posData = data;
    ShowBlocks();
}

Long QXPos::TransferSize(bool /*LoadInKeyboard*/) const {
    TraceNamed(".TransferSize");
    return kPOSModuleBlockSize;
}

void QXPos::DefaultValues() {
    TraceNamed(".DefaultValues");
    m_posData = {};
    ShowBlocks();
}

void QXPos::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload");
    QueueBlock();
}

void QXPos::PrepareDataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataDownload");
    QueueBlock();
}

void QXPos::QueueBlock() {
    const Long base = BaseAddress(MODULE_POS);
    if (base != -1)
        Keyboard()->MemRequestAdd(MODULE_POS, base, kPOSModuleBlockSize);
}

void QXPos::DataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataUpload");
    const Long base = BaseAddress(MODULE_POS);
    if (base == -1)
        return;
    std::string data;
    if (!Keyboard()->ReadFromMemory(data, base, kPOSModuleBlockSize)) {
        TraceNamed(".DataUpload failed at " + Hex(base));
        return;
    }
    if (!Guarded(".DataUpload", [&] { DecodePOSModuleBlock(data, m_posData); }))
        return;
    m_posData.CalcDefinedBlockNum();
    ShowBlocks();
}

void QXPos::DataDownload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataDownload");
    const Long base = BaseAddress(MODULE_POS);
    if (base == -1)
        return;
    Guarded(".DataDownload", [&] {
        const std::string data = EncodePOSModuleBlock(m_posData);
        if (!Keyboard()->WriteIntoMemory(data, base, kPOSModuleBlockSize))
            TraceNamed(".DataDownload failed at " + Hex(base));
    });
}

void QXPos::Translate() {
    TraceNamed(".Translate");
    m_buttonEdit.ShowOn(cmdEdit);
    m_buttonCleanAll.ShowOn(cmdCleanAll);
    lblNumBlocks.Caption = m_numBlocksCaption;
    Refreshed.Raise();
}

void QXPos::ReloadKeySettings() {
    TraceNamed(".ReloadKeySettings");
    ShowBlocks();
}

void QXPos::ReloadColor() {
    TraceNamed(".ReloadColor");
    ShowBlocks();
}

void QXPos::cmdEdit_Click() {
    bool fCancelEdit = true;
    POSEditorRequested.Raise(fCancelEdit);
    if (fCancelEdit)
        return;
    m_posData.CalcDefinedBlockNum(); // the programmer has edited the model in place
    SetDataChanged(true);
    ShowBlocks();
}

void QXPos::cmdCleanAll_Click() {
    bool fCancelRemoving = true;
    RemoveAllBlocks.Raise(fCancelRemoving);
    if (fCancelRemoving)
        return;
    m_posData.CleanAllBlocks();
    SetDataChanged(true);
    ShowBlocks();
}

void QXPos::PrefSourceAssigned() {
    ShowBlocks();
}

std::string QXPos::AssignmentText(std::string_view sProperty, std::string_view /*sType*/) const {
    return std::string(sProperty);
}

void QXPos::ShowBlocks() {
    posDisplay.PaintTogether([this] { PaintKeys(); });
    lblBlockNum.Caption = std::to_string(m_posData.BlockNum());
    Refreshed.Raise();
}

void QXPos::PaintKeys() {
    const Long colorUnused = ColorUnused(PrefSource());
    for (Integer key = 1; key <= POSKeyboard::kSlots; ++key) {
        posDisplay.SetAsUnused(key, colorUnused);
        posDisplay.SetKeyCaption(key, {}, {});
    }
    for (Integer slot = 1; slot <= POSKeyboard::kSlots; ++slot) {
        const POSBlock& block = m_posData.Block(slot);
        if (block.BlockSize() > 0)
            PaintBlock(block, ColorOfBlock(PrefSource(), block.ColorID()));
    }
}

void QXPos::PaintBlock(const POSBlock& block, Long lColor) {
    const std::string caption = std::to_string(block.BlockID());
    for (Integer i = 1; i <= block.BlockSize(); ++i) {
        posDisplay.SetKeyColor(block.GetKey(i), lColor);
        posDisplay.SetKeyCaption(block.GetKey(i), caption, {});
    }
}

} // namespace qx
