// QXLayeredFuncKeys: the control for the function keys whose meaning depends on a layer.
//
// The control owns ten layers of 24 keys and shows one of them at a time; the user picks a key and
// edits its sequence and description. It also owns the identifier of the configuration: created
// with the control, written by a download, replaced by an upload.
//
// A download with LoadInKeyboard requests only the used bytes of keys with a sequence, and neither
// kind requests the descriptions: these are only put into the image.
//
// If a keyboard does not have MODULE_GUID, the identifier is requested at address -1 and accessed
// at the addresses -1 to 14; a host must keep all these from the driver.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/keyprog/LayeredFuncKeyBlocks.h"

namespace qx {

struct FuncKeyButton : Button { // the tooltip is the key's description
    bool Programmed = false;    // has a sequence
    bool Current = false;
    Long BackColor = 0; // the preferences' colour of a programmed, empty or current key
};

class QXLayeredFuncKeys : public ModuleControl {
public:
    static constexpr Integer kNoKey = -1;

    explicit QXLayeredFuncKeys(const Platform& platform = {});

    Event<> NoKeySelectedToEdit;
    Event<> NoKeySelectedToClean;
    // The flags are preset to True: without an answer nothing changes. sNewSeq is preset to the
    // current sequence.
    Event<bool&> CleanThisLayer; // fCancelClean
    Event<bool&> CleanAllLayers; // fCancelClean
    // sCurrSeq, fCancelEdit, sNewSeq
    Event<const std::string&, bool&, std::string&> EditLayeredFuncKey;
    Event<bool&> AdvanceEdit; // fEdit, preset to False

    using ModuleControl::LayoutSource;

    // The layers, 0 to 9; throws std::out_of_range for other numbers. Call ReloadKeySettings after
    // changing one.
    [[nodiscard]] FuncKeyLayer& Layer(Integer nLayer);
    [[nodiscard]] const FuncKeyLayer& Layer(Integer nLayer) const;
    [[nodiscard]] const Guid& Identifier() const { return m_identifier; }
    void SetIdentifier(const Guid& identifier) { m_identifier = identifier; }

    [[nodiscard]] Integer CurrentLayer() const { return m_layer; } // 0 to 9
    [[nodiscard]] Integer CurrentKey() const { return m_key; }     // 0 to 23, or kNoKey
    // Switches the keyboard itself to the current layer.
    void ShowCurrentSelectedLayerOnKeyboard();

    // Texts, shown by the next Translate.
    [[nodiscard]] ButtonCaption& ButtonEdit() { return m_texts.edit[0]; }
    void SetButtonEdit(const ButtonCaption& caption) { m_texts.edit[0] = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanKey() { return m_texts.edit[1]; }
    void SetButtonCleanKey(const ButtonCaption& caption) { m_texts.edit[1] = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanLayer() { return m_texts.edit[2]; }
    void SetButtonCleanLayer(const ButtonCaption& caption) { m_texts.edit[2] = caption; }
    [[nodiscard]] ButtonCaption& ButtonCleanAllLayer() { return m_texts.edit[3]; }
    void SetButtonCleanAllLayer(const ButtonCaption& caption) { m_texts.edit[3] = caption; }
    [[nodiscard]] ButtonCaption& ButtonLayerInc() { return m_texts.layer[0]; }
    void SetButtonLayerInc(const ButtonCaption& caption) { m_texts.layer[0] = caption; }
    [[nodiscard]] ButtonCaption& ButtonLayerDec() { return m_texts.layer[1]; }
    void SetButtonLayerDec(const ButtonCaption& caption) { m_texts.layer[1] = caption; }
    [[nodiscard]] const std::string& CaptionSequence() const { return m_texts.sequence; }
    void SetCaptionSequence(std::string sText) { m_texts.sequence = std::move(sText); }
    [[nodiscard]] const std::string& FunctionKeyDescription() const { return m_texts.description; }
    void SetFunctionKeyDescription(std::string sText) { m_texts.description = std::move(sText); }
    [[nodiscard]] const std::string& ShowDetails() const { return m_texts.details; }
    void SetShowDetails(std::string sText) { m_texts.details = std::move(sText); }
    [[nodiscard]] const std::string& LayerDesc() const { return m_texts.layerDesc; }
    void SetLayerDesc(std::string sText) { m_texts.layerDesc = std::move(sText); }

    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    // Empties all sequences and descriptions; the identifier is unchanged.
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    void DataDownload(bool LoadInKeyboard) override;
    void Translate() override;
    void ReloadKeySettings() override;
    void ReloadColor() override;

    Slider spinLayer;
    std::array<Button, 2> cmdLayer; // 0 up, 1 down
    Label lblLayerDesc;             // LayerDesc
    Label lblLayerID;
    std::array<FuncKeyButton, FuncKeyLayer::kKeys> cmdFuncKey;
    Label lblSequence;   // CaptionSequence
    Label lblCurrSeq;    // the current key's sequence as text
    Label lblSymbolDesc; // FunctionKeyDescription
    TextBox txtSymbolDesc;
    std::array<Button, 4> cmdEdit; // 0 edit, 1 clean key, 2 clean layer, 3 clean all layers
    CheckBox chkShowDetails;       // whether the sequence's text includes the releases of keys

    void spinLayer_Change();
    void cmdLayer_Click(Integer Index);
    void cmdFuncKey_Click(Integer Index);
    void cmdEdit_Click(Integer Index);
    void chkShowDetails_Click();
    void txtSymbolDesc_Change();
    void lblCurrSeq_KeyPress();

protected:
    void KeyboardAssigned() override;
    void LayoutSourceAssigned() override;
    void PrefSourceAssigned() override;

private:
    struct Texts {
        std::array<ButtonCaption, 4> edit;
        std::array<ButtonCaption, 2> layer;
        std::string sequence, description, details, layerDesc;
    };

    void DownloadIdentifier();
    void UploadFuncKeyDescription();
    void DownloadFuncKeyDescription(bool LoadInKeyboard);
    void KeyEdit();
    void KeyClean();
    void KeyCleanLayer();
    void KeyCleanAllLayer();
    void LayerUp();
    void LayerDown();
    void SelectLayer(Integer nLayer);
    void ShowLayerInfo();
    void ShowKeys();
    void SetToolTipForKey(Integer nKeyID);
    void DisplaySymbolDesc();

    FuncKeyLayers m_layers;
    Guid m_identifier;
    bool m_withIdentifier = false; // and descriptions
    Integer m_layer = 0;
    Integer m_key = kNoKey;
    Texts m_texts;
};

} // namespace qx
