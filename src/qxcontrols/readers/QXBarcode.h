// QXBarcode: the control for the barcode reader: a list of pages, and beside it either the options
// and code lengths of one symbology or the header and terminator of one of the two reader inputs.
//
// It owns all settings and transfers them. It opens no editor: it asks its host to change a
// sequence. In the arrays of the reader's child controls, index 0 is the header's, index 1 the
// terminator's.
#pragma once

#include "qxcontrols/common/ButtonCaption.h"
#include "qxcontrols/common/ChildControls.h"
#include "qxcontrols/device/ModuleControl.h"
#include "qxcontrols/readers/BarcodeBlocks.h"

#include <array>
#include <string>

namespace qx {

class QXBarcode : public ModuleControl {
public:
    explicit QXBarcode(const Platform& platform = {});

    // The settings. Call AdjustControls after changing them in place. A page with options is one of
    // BP_CommonSettings to BP_Plessey, a reader is 1 or 2; both throw std::out_of_range for other
    // numbers.
    [[nodiscard]] BarcodeOptionPage& BitPage(Integer ePage);
    [[nodiscard]] const BarcodeOptionPage& BitPage(Integer ePage) const;
    [[nodiscard]] MagneticTrack& Reader(Integer nReader);
    [[nodiscard]] const MagneticTrack& Reader(Integer nReader) const;

    // The texts; those of the options are in their pages. Call Translate after changing them in
    // place.
    [[nodiscard]] const std::string& ListCaption() const { return lblList.Caption; }
    void SetListCaption(std::string sText) { Show(lblList.Caption, sText); }
    [[nodiscard]] const std::string& ShowDetails() const { return chkShowDetails.Caption; }
    void SetShowDetails(std::string sText) { Show(chkShowDetails.Caption, sText); }
    [[nodiscard]] ButtonCaption& ButtonEdit() { return m_buttonEdit; }
    [[nodiscard]] const ButtonCaption& ButtonEdit() const { return m_buttonEdit; }
    void SetButtonEdit(const ButtonCaption& texts);
    [[nodiscard]] ButtonCaption& ButtonRemove() { return m_buttonRemove; }
    [[nodiscard]] const ButtonCaption& ButtonRemove() const { return m_buttonRemove; }
    void SetButtonRemove(const ButtonCaption& texts);
    [[nodiscard]] OptionBool& OptionHeader() { return m_optionHeader; } // only its caption is used
    [[nodiscard]] const OptionBool& OptionHeader() const { return m_optionHeader; }
    void SetOptionHeader(const OptionBool& option);
    [[nodiscard]] OptionBool& OptionTerminator() { return m_optionTerminator; } // the same
    [[nodiscard]] const OptionBool& OptionTerminator() const { return m_optionTerminator; }
    void SetOptionTerminator(const OptionBool& option);
    [[nodiscard]] const std::string& Reader1Msg() const { return m_readerMsg[0]; }
    void SetReader1Msg(std::string sText);
    [[nodiscard]] const std::string& Reader2Msg() const { return m_readerMsg[1]; }
    void SetReader2Msg(std::string sText);
    [[nodiscard]] const std::string& MinSizeCaption() const { return lblRange[0].Caption; }
    void SetMinSizeCaption(std::string sText) { Show(lblRange[0].Caption, sText); }
    [[nodiscard]] const std::string& MaxSizeCaption() const { return lblRange[1].Caption; }
    void SetMaxSizeCaption(std::string sText) { Show(lblRange[1].Caption, sText); }
    // The text of a page in the list. Throws std::out_of_range outside 0 to 20; only those of pages
    // are shown.
    void SetListEntry(Integer ePage, std::string sCaption);

    // Without an answer, an edit is cancelled and nothing is removed.
    Event<const std::string&, bool&, std::string&> EditHeader;     // sCurrSeq, fCancelEdit (true),
                                                                   // sNewSeq (sCurrSeq)
    Event<const std::string&, bool&, std::string&> EditTerminator; // never raised: EditHeader
                                                                   // is raised for both
    Event<bool&> RemoveHeader;                                     // fRemoveIt (false)
    Event<bool&> RemoveTerminator;                                 // fRemoveIt (false)
    Event<bool&> AdvanceEdit;                                      // fEdit (false)

    [[nodiscard]] Long TransferSize(bool LoadInKeyboard) const override;
    void DefaultValues() override;
    void PrepareDataUpload(bool LoadInKeyboard) override;
    void PrepareDataDownload(bool LoadInKeyboard) override;
    void DataUpload(bool LoadInKeyboard) override;
    // Both end at the first access that the keyboard refuses; DataDownload also at a code length
    // outside 0 to 255, or a code outside 0 to 255 other than -1 (see KeySequence.h). Settings read
    // or written before that are kept.
    void DataDownload(bool LoadInKeyboard) override;
    void Translate() override;
    void AdjustControls() override;
    void ReloadKeySettings() override;

    Label lblList;
    ListBox lstPrefGroup; // one entry per page, in the order of their numbers
    // An option page.
    // Those in use are visible; options that the keyboard does not store are disabled.
    std::array<CheckBox, BarcodeOptionPage::kFlags> chkBarOption;
    std::array<Slider, 2> slidRange; // minimum and maximum length; limited once moved
    std::array<Label, 2> lblRange;
    std::array<Label, 2> lblCurrSize;
    // A reader's page.
    Label lblHint;
    std::array<CheckBox, 2> chkReader;
    std::array<Label, 2> lblReader;
    std::array<Button, 2> cmdEdit;
    std::array<Button, 2> cmdRemove;
    CheckBox chkShowDetails; // 1: the sequences' texts include released keys

    // The control's view has appeared.
    void UserControl_Show() const { TraceNamed(".UserControl_Show"); }

    // The user's actions. Removing a sequence and moving a slider do not change DataChanged.
    void lstPrefGroup_Click();
    void chkBarOption_Click(Integer Index);
    void slidRange_Change(Integer Index);
    void chkReader_Click(Integer Index);
    void cmdEdit_Click(Integer Index);
    void cmdRemove_Click(Integer Index);
    void lblReader_KeyDown(Integer Index, Integer KeyCode); // KeyCode: virtual key code
    void chkShowDetails_Click();

protected:
    void LayoutSourceAssigned() override { SequencesChanged(); }

private:
    [[nodiscard]] bool IsReaderPage() const { return m_page >= BP_Reader_1; }
    // The displayed page of options; not for a reader's page.
    [[nodiscard]] BarcodeOptionPage& CurrentPage() {
        return m_settings.pages[static_cast<std::size_t>(m_page)];
    }
    // Reader 1 on its own page, otherwise reader 2.
    [[nodiscard]] MagneticTrack& CurrentReader() { return Reader(m_page == BP_Reader_1 ? 1 : 2); }

    void Show(std::string& sShown, std::string& sText);
    void TextsChanged();
    void SequencesChanged();
    void ShowTexts();
    void ShowPage(Integer nPage);
    void ShowOptions();
    void ShowReader();
    void ShowSequences();
    void MoveSlider(Integer Index);
    void QueueBlocks();
    bool WriteHeaders(Long lAddress);
    void WriteConfig(Long lAddress);

    BarcodeSettings m_settings;
    Integer m_page = BP_CommonSettings;
    std::array<std::string, 21> m_listEntries; // more than there are pages; the rest is only stored
    std::array<std::string, kBarcodeReaders> m_readerMsg;
    ButtonCaption m_buttonEdit;
    ButtonCaption m_buttonRemove;
    OptionBool m_optionHeader;
    OptionBool m_optionTerminator;
};

} // namespace qx
