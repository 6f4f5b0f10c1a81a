#include "qxcontrols/keyprog/QXLayeredFuncKeys.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keys/SequenceCaption.h"
#include "qxcontrols/settings/QXProgSettings.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

constexpr std::string_view kNoAddress = "ERROR : NO ADDRESS FOR MODULE LAYERED FUNC KEYS";

void TraceEvent(std::string_view sEvent) {
    Trace("------------------>RaiseEvent QXLayeredFuncKeys_" + std::string(sEvent));
}

Long ColorOf(const FuncKeyButton& button, const QXProgSettings* preferences) {
    if (button.Current)
        return preferences != nullptr ? preferences->ColorCurr()
                                      : InfoOf(Preference::ColorCurr).loadDefault;
    if (button.Programmed)
        return preferences != nullptr ? preferences->ColorProg()
                                      : InfoOf(Preference::ColorProg).loadDefault;
    return preferences != nullptr ? preferences->ColorEmpty()
                                  : InfoOf(Preference::ColorEmpty).loadDefault;
}

} // namespace

QXLayeredFuncKeys::QXLayeredFuncKeys(const Platform& platform)
    : ModuleControl("QXLayeredFuncKeys", MODULE_LAYERED_FUNCKEYS, platform) {
    if (Guarded(".UserControl_Initialize",
                [&] { m_identifier = Services().guidCreator->CreateSafeGuid(); }))
        Trace("GUID CREATED FOR CONTROL...");
    spinLayer.Max = kFuncKeyLayers - 1;
    for (std::size_t key = 0; key < cmdFuncKey.size(); ++key)
        cmdFuncKey[key].Caption = FuncKeyLegend(static_cast<Integer>(key));
    ShowLayerInfo();
}

const FuncKeyLayer& QXLayeredFuncKeys::Layer(Integer nLayer) const {
    if (nLayer < 0 || nLayer >= kFuncKeyLayers)
        throw std::out_of_range("layer " + std::to_string(nLayer) + " is not one of 0 to 9");
    return m_layers[static_cast<std::size_t>(nLayer)];
}

FuncKeyLayer& QXLayeredFuncKeys::Layer(Integer nLayer) {
    return const_cast<FuncKeyLayer&>(std::as_const(*this).Layer(nLayer));
}

void QXLayeredFuncKeys::ShowCurrentSelectedLayerOnKeyboard() {
    TraceNamed(".ShowCurrentSelectedLayerOnKeyboard");
    if (Keyboard() != nullptr)
        Keyboard()->SelectFunctionKeyLayer(m_layer);
}

// Transfers.

Long QXLayeredFuncKeys::TransferSize(bool LoadInKeyboard) const {
    TraceNamed(".TransferSize");
    Long size = m_withIdentifier ? kGuidSize : 0;
    if (!LoadInKeyboard)
        return size + kFuncKeySequencesSize;
    for (const FuncKeyLayer& layer : m_layers)
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
            size += UsedSlotSize(layer.GetKey(key));
    return size;
}

void QXLayeredFuncKeys::DefaultValues() {
    TraceNamed(".DefaultValues");
    m_layers = {};
    ShowLayerInfo();
}

void QXLayeredFuncKeys::PrepareDataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".PrepareDataUpload ");
    const Long base = BaseAddress(ConfigID());
    if (base == -1) {
        Trace(kNoAddress);
        return;
    }
    Keyboard()->MemRequestAdd(MODULE_LAYERED_FUNCKEYS, base, kFuncKeySequencesSize);
    Keyboard()->MemRequestAdd(MODULE_GUID, BaseAddress(MODULE_GUID), kGuidSize);
    Keyboard()->MemRequestAdd(MODULE_LAYER_FUNCKEY_DESC, kFuncKeyDescAddress, kFuncKeyDescSize);
}

void QXLayeredFuncKeys::PrepareDataDownload(bool LoadInKeyboard) {
    TraceNamed(".PrepareDataUpload"); // traced like the upload, except for the space
    const Long base = BaseAddress(ConfigID());
    if (base == -1) {
        Trace(kNoAddress);
        return;
    }
    if (!LoadInKeyboard)
        Keyboard()->MemRequestAdd(MODULE_LAYERED_FUNCKEYS, base, kFuncKeySequencesSize);
    for (Integer layer = 0; LoadInKeyboard && layer < kFuncKeyLayers; ++layer)
        for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key)
            if (const Long used = UsedSlotSize(Layer(layer).GetKey(key)); used > 0)
                Keyboard()->MemRequestAdd(MODULE_LAYERED_FUNCKEYS,
                                          base + FuncKeySlotOffset(layer, key), used);
    Keyboard()->MemRequestAdd(MODULE_GUID, BaseAddress(MODULE_GUID), kGuidSize);
}

void QXLayeredFuncKeys::DataUpload(bool /*LoadInKeyboard*/) {
    TraceNamed(".DataUpload");
    const Long base = BaseAddress(ConfigID());
    if (base == -1)
        return;
    std::string data;
    if (!Keyboard()->ReadFromMemory(data, base, kFuncKeySequencesSize)) {
        TraceNamed(".DataUpload failed at " + Hex(base));
        return;
    }
    TraceNamed(".DataUpload ok     at " + Hex(base));
    DecodeFuncKeySequences(data, m_layers);
    m_identifier = ReadFuncKeyGuid(*Keyboard(), BaseAddress(MODULE_GUID));
    Trace("LOADED GUID");
    Trace(ToText(m_identifier));
    if (m_withIdentifier)
        UploadFuncKeyDescription();
    ShowLayerInfo();
}

void QXLayeredFuncKeys::DataDownload(bool LoadInKeyboard) {
    TraceNamed(".DataDownload");
    const Long base = BaseAddress(ConfigID());
    if (base == -1)
        return;
    Guarded(".DataDownload", [&] {
        const std::string data = EncodeFuncKeySequences(m_layers);
        const bool written = Keyboard()->WriteIntoMemory(data, base, kFuncKeySequencesSize);
        TraceNamed((written ? ".DataDownload ok     at " : ".DataDownload failed at ") + Hex(base));
        DownloadIdentifier();
        DownloadFuncKeyDescription(LoadInKeyboard);
    });
}

void QXLayeredFuncKeys::DownloadIdentifier() {
    const Long address = BaseAddress(MODULE_GUID);
    Trace("GUID-ADDRESS IS " + std::to_string(address));
    WriteFuncKeyGuid(*Keyboard(), address, m_identifier);
    Trace("STORED GUID");
}

void QXLayeredFuncKeys::UploadFuncKeyDescription() {
    TraceNamed(".UploadFuncKeyDescription");
    ReadFuncKeyDescriptions(*Keyboard(), m_layers);
}

void QXLayeredFuncKeys::DownloadFuncKeyDescription(bool LoadInKeyboard) {
    TraceNamed(".DownloadFuncKeyDescription");
    if (LoadInKeyboard)
        Trace("WRITE INTO KEYBOARD !!!");
    WriteFuncKeyDescriptions(*Keyboard(), m_layers);
}

void QXLayeredFuncKeys::KeyboardAssigned() {
    if (Keyboard() == nullptr)
        return;
    static_cast<void>(Keyboard()->HasItem(MODULE_GUID)); // the answer is ignored
    m_withIdentifier = true;
}

void QXLayeredFuncKeys::LayoutSourceAssigned() {
    ShowLayerInfo();
}

void QXLayeredFuncKeys::PrefSourceAssigned() {
    ShowLayerInfo();
}

// User actions.

void QXLayeredFuncKeys::spinLayer_Change() {
    SelectLayer(std::clamp(spinLayer.Value, spinLayer.Min, spinLayer.Max));
}

void QXLayeredFuncKeys::cmdLayer_Click(Integer Index) {
    if (Index == 0)
        LayerUp();
    else if (Index == 1)
        LayerDown();
}

void QXLayeredFuncKeys::LayerUp() {
    SelectLayer(m_layer + 1 == kFuncKeyLayers ? Integer{0} : static_cast<Integer>(m_layer + 1));
}

void QXLayeredFuncKeys::LayerDown() {
    SelectLayer(static_cast<Integer>((m_layer == 0 ? kFuncKeyLayers : m_layer) - 1));
}

void QXLayeredFuncKeys::SelectLayer(Integer nLayer) {
    m_key = kNoKey;
    m_layer = nLayer;
    ShowLayerInfo();
}

void QXLayeredFuncKeys::cmdFuncKey_Click(Integer Index) {
    if (Index < 0 || Index >= FuncKeyLayer::kKeys)
        return;
    m_key = Index;
    ShowLayerInfo();
}

void QXLayeredFuncKeys::cmdEdit_Click(Integer Index) {
    switch (Index) {
    case 0:
        return KeyEdit();
    case 1:
        return KeyClean();
    case 2:
        return KeyCleanLayer();
    case 3:
        return KeyCleanAllLayer();
    default:
        return;
    }
}

void QXLayeredFuncKeys::KeyEdit() {
    if (m_key == kNoKey) {
        TraceEvent("NoKeySelectedToEdit");
        NoKeySelectedToEdit.Raise();
        return;
    }
    KeySequence& sequence = Layer(m_layer).GetKey(m_key); // the host may select another key
    const std::string sCurrSeq = sequence.KeyString();
    bool fCancelEdit = true;
    std::string sNewSeq = sCurrSeq;
    TraceEvent("EditLayeredFuncKey");
    EditLayeredFuncKey.Raise(sCurrSeq, fCancelEdit, sNewSeq);
    Trace("------------------>next after RaiseEvent");
    if (fCancelEdit)
        return;
    if (!Guarded(".KeyEdit", [&] { sequence.SetKeyString(std::move(sNewSeq)); }))
        return;
    SetDataChanged(true);
    ShowLayerInfo();
}

void QXLayeredFuncKeys::KeyClean() {
    if (m_key == kNoKey) {
        TraceEvent("NoKeySelectedToClean");
        NoKeySelectedToClean.Raise();
        return;
    }
    SetDataChanged(true);
    Layer(m_layer).GetKey(m_key).Clear();
    ShowLayerInfo();
}

void QXLayeredFuncKeys::KeyCleanLayer() {
    FuncKeyLayer& layer = Layer(m_layer); // the host may select another
    bool fCancelClean = true;
    TraceEvent("CleanThisLayer");
    CleanThisLayer.Raise(fCancelClean);
    if (fCancelClean)
        return;
    SetDataChanged(true);
    layer.CleanLayer();
    ShowLayerInfo();
}

void QXLayeredFuncKeys::KeyCleanAllLayer() {
    bool fCancelClean = true;
    TraceEvent("CleanAllLayers");
    CleanAllLayers.Raise(fCancelClean);
    if (fCancelClean)
        return;
    SetDataChanged(true);
    for (FuncKeyLayer& layer : m_layers)
        layer.CleanLayer();
    ShowLayerInfo();
}

void QXLayeredFuncKeys::chkShowDetails_Click() {
    ShowLayerInfo();
}

void QXLayeredFuncKeys::txtSymbolDesc_Change() {
    if (m_key == kNoKey) {
        Trace("txtSymbolDesc_Change with NO_KEY");
        return;
    }
    Trace("txtSymbolDesc_Change to (" + txtSymbolDesc.Text + ")");
    if (Layer(m_layer).GetKeyDesc(m_key) == txtSymbolDesc.Text)
        return;
    Layer(m_layer).SetKeyDesc(m_key, txtSymbolDesc.Text);
    SetDataChanged(true);
    ShowLayerInfo();
}

void QXLayeredFuncKeys::lblCurrSeq_KeyPress() {
    bool fEdit = false;
    TraceEvent("AdvanceEdit");
    AdvanceEdit.Raise(fEdit);
    if (fEdit)
        KeyEdit();
}

// Display.

void QXLayeredFuncKeys::Translate() {
    TraceNamed(".Translate");
    for (std::size_t i = 0; i < cmdEdit.size(); ++i)
        m_texts.edit[i].ShowOn(cmdEdit[i]);
    for (std::size_t i = 0; i < cmdLayer.size(); ++i)
        m_texts.layer[i].ShowOn(cmdLayer[i]);
    lblSequence.Caption = m_texts.sequence;
    lblSymbolDesc.Caption = m_texts.description;
    chkShowDetails.Caption = m_texts.details;
    lblLayerDesc.Caption = m_texts.layerDesc;
    Refreshed.Raise();
}

void QXLayeredFuncKeys::ReloadKeySettings() {
    TraceNamed(".ReloadKeySettings");
    ShowLayerInfo();
}

void QXLayeredFuncKeys::ReloadColor() {
    TraceNamed(".ReloadColor");
    ShowLayerInfo();
}

void QXLayeredFuncKeys::ShowLayerInfo() {
    spinLayer.Value = m_layer;
    lblLayerID.Caption = std::to_string(m_layer);
    ShowKeys();
    lblCurrSeq.Caption.clear();
    if (m_key != kNoKey)
        lblCurrSeq.Caption = SequenceCaption(Layer(m_layer).GetKey(m_key), LayoutSource(),
                                             chkShowDetails.Value == 1);
    DisplaySymbolDesc();
    Refreshed.Raise();
}

void QXLayeredFuncKeys::ShowKeys() {
    for (Integer key = 0; key < FuncKeyLayer::kKeys; ++key) {
        FuncKeyButton& button = cmdFuncKey[static_cast<std::size_t>(key)];
        button.Programmed = Layer(m_layer).GetKey(key).Length() > 0;
        button.Current = key == m_key;
        button.BackColor = ColorOf(button, PrefSource());
        SetToolTipForKey(key);
    }
}

void QXLayeredFuncKeys::SetToolTipForKey(Integer nKeyID) {
    cmdFuncKey[static_cast<std::size_t>(nKeyID)].ToolTip = Layer(m_layer).GetKeyDesc(nKeyID);
}

void QXLayeredFuncKeys::DisplaySymbolDesc() {
    txtSymbolDesc.Enabled = m_key != kNoKey;
    if (m_key == kNoKey) {
        Trace("DisplaySymbolDesc - NO_KEY");
        txtSymbolDesc.Text.clear();
        return;
    }
    Trace("DisplaySymbolDesc - " + std::to_string(m_layer) + "/" + std::to_string(m_key));
    txtSymbolDesc.Text = Layer(m_layer).GetKeyDesc(m_key);
}

} // namespace qx
