#include "qxcontrols/readers/QXBarcode.h"

#include "qxcontrols/keys/SequenceCaption.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

// Virtual key codes of the navigation keys: page up to the down arrow.
constexpr Integer kFirstMovingKey = 33;
constexpr Integer kLastMovingKey = 40;

bool IsOneOfTwo(Integer Index) {
    return Index == 0 || Index == 1;
}

} // namespace

QXBarcode::QXBarcode(const Platform& platform)
    : ModuleControl("QXBarcode", MODULE_BARCODE_CONFIG, platform) {
    SetBarcodeLimits(m_settings);
    QXBarcode::DefaultValues();
    ShowTexts();
    ShowPage(BP_CommonSettings);
}

BarcodeOptionPage& QXBarcode::BitPage(Integer ePage) {
    return const_cast<BarcodeOptionPage&>(std::as_const(*this).BitPage(ePage));
}

const BarcodeOptionPage& QXBarcode::BitPage(Integer ePage) const {
    TraceNamed(".BitPage");
    if (ePage < 0 || ePage >= kBarcodeOptionPages)
        throw std::out_of_range("barcode page " + std::to_string(ePage) + " is not one of 0 to 13");
    return m_settings.pages[static_cast<std::size_t>(ePage)];
}

MagneticTrack& QXBarcode::Reader(Integer nReader) {
    return const_cast<MagneticTrack&>(std::as_const(*this).Reader(nReader));
}

const MagneticTrack& QXBarcode::Reader(Integer nReader) const {
    if (nReader < 1 || nReader > kBarcodeReaders)
        throw std::out_of_range("barcode reader " + std::to_string(nReader) + " is not 1 or 2");
    return m_settings.readers[static_cast<std::size_t>(nReader - 1)];
}

void QXBarcode::Show(std::string& sShown, std::string& sText) {
    sShown = std::move(sText);
    Refreshed.Raise();
}

void QXBarcode::SetButtonEdit(const ButtonCaption& texts) {
    m_buttonEdit = texts;
    TextsChanged();
}

void QXBarcode::SetButtonRemove(const ButtonCaption& texts) {
    m_buttonRemove = texts;
    TextsChanged();
}

void QXBarcode::SetOptionHeader(const OptionBool& option) {
    m_optionHeader = option;
    TextsChanged();
}

void QXBarcode::SetOptionTerminator(const OptionBool& option) {
    m_optionTerminator = option;
    TextsChanged();
}

void QXBarcode::SetReader1Msg(std::string sText) {
    m_readerMsg[0] = std::move(sText);
    TextsChanged();
}

void QXBarcode::SetReader2Msg(std::string sText) {
    m_readerMsg[1] = std::move(sText);
    TextsChanged();
}

void QXBarcode::SetListEntry(Integer ePage, std::string sCaption) {
    TraceNamed(".SetListEntry");
    if (ePage < 0 || ePage >= static_cast<Integer>(m_listEntries.size()))
        throw std::out_of_range("list entry " + std::to_string(ePage) + " is not one of 0 to 20");
    m_listEntries[static_cast<std::size_t>(ePage)] = std::move(sCaption);
    TextsChanged();
}

void QXBarcode::DefaultValues() {
    TraceNamed(".DefaultValues");
    SetBarcodeDefaults(m_settings);
    AdjustControls();
}

void QXBarcode::Translate() {
    TraceNamed(".Translate");
    TextsChanged();
}

void QXBarcode::AdjustControls() {
    TraceNamed(".AdjustControls");
    ShowPage(m_page);
    Refreshed.Raise();
}

void QXBarcode::ReloadKeySettings() {
    TraceNamed(".ReloadKeySettings");
    SequencesChanged();
}

void QXBarcode::lstPrefGroup_Click() {
    const Integer nPage = lstPrefGroup.ListIndex;
    if (nPage < 0 || nPage >= kBarcodePages)
        return;
    ShowPage(nPage);
    Refreshed.Raise();
}

void QXBarcode::chkBarOption_Click(Integer Index) {
    if (IsReaderPage() || Index < 0 || Index >= BarcodeOptionPage::kFlags)
        return;
    OptionBool& flag = CurrentPage().Flag(Index);
    const Integer nValue = chkBarOption[static_cast<std::size_t>(Index)].Value;
    if (nValue == flag.CtlValue())
        return;
    SetDataChanged(true);
    flag.SetCtlValue(nValue);
    Refreshed.Raise();
}

void QXBarcode::slidRange_Change(Integer Index) {
    if (IsReaderPage() || !IsOneOfTwo(Index))
        return;
    MoveSlider(Index);
    Refreshed.Raise();
}

void QXBarcode::MoveSlider(Integer Index) {
    BarcodeOptionPage& page = CurrentPage();
    Slider& slider = slidRange[static_cast<std::size_t>(Index)];
    slider.Value = std::max(slider.Value, page.LimitMinSize());
    slider.Value = std::min(slider.Value, page.LimitMaxSize());
    slider.Min = page.LimitMinSize();
    slider.Max = page.LimitMaxSize();

    const bool isMaximum = Index == 1;
    const auto other = static_cast<Integer>(1 - Index);
    Slider& otherSlider = slidRange[static_cast<std::size_t>(other)];
    if (isMaximum ? slider.Value < otherSlider.Value : slider.Value > otherSlider.Value) {
        otherSlider.Value = slider.Value;
        MoveSlider(other);
    }
    if (isMaximum)
        page.SetMaxSize(slider.Value);
    else
        page.SetMinSize(slider.Value);
    lblCurrSize[static_cast<std::size_t>(Index)].Caption = std::to_string(slider.Value);
}

void QXBarcode::chkReader_Click(Integer Index) {
    if (!IsOneOfTwo(Index))
        return;
    const bool isOn = chkReader[static_cast<std::size_t>(Index)].Value == 1;
    if (Index == 0)
        CurrentReader().SetHeaderEnabled(isOn);
    else
        CurrentReader().SetTerminatorEnabled(isOn);
    SetDataChanged(true);
    Refreshed.Raise();
}

void QXBarcode::cmdEdit_Click(Integer Index) {
    KeySequence& sequence = SequenceOf(CurrentReader(), Index);
    const std::string sCurrSeq = sequence.KeyString();
    std::string sNewSeq = sCurrSeq;
    bool fCancelEdit = true;
    EditHeader.Raise(sCurrSeq, fCancelEdit, sNewSeq);
    if (fCancelEdit)
        return;
    if (!Guarded(".cmdEdit_Click", [&] { sequence.SetKeyString(std::move(sNewSeq)); }))
        return;
    SetDataChanged(true);
    SequencesChanged();
}

void QXBarcode::cmdRemove_Click(Integer Index) {
    bool fRemoveIt = false;
    (Index == 0 ? RemoveHeader : RemoveTerminator).Raise(fRemoveIt);
    if (!fRemoveIt || !IsReaderPage() || !IsOneOfTwo(Index))
        return;
    SequenceOf(CurrentReader(), Index).Clear();
    ShowPage(m_page);
    Refreshed.Raise();
}

void QXBarcode::lblReader_KeyDown(Integer Index, Integer KeyCode) {
    if (KeyCode >= kFirstMovingKey && KeyCode <= kLastMovingKey)
        return;
    bool fEdit = false;
    AdvanceEdit.Raise(fEdit);
    if (!fEdit)
        return;
    Services().pendingMessages->Process();
    cmdEdit_Click(Index);
}

void QXBarcode::chkShowDetails_Click() {
    SequencesChanged();
}

void QXBarcode::TextsChanged() {
    ShowTexts();
    ShowPage(m_page);
    Refreshed.Raise();
}

void QXBarcode::SequencesChanged() {
    ShowSequences();
    Refreshed.Raise();
}

void QXBarcode::ShowTexts() {
    lstPrefGroup.Items.assign(m_listEntries.begin(), m_listEntries.begin() + kBarcodePages);
    for (Button& button : cmdEdit)
        m_buttonEdit.ShowOn(button);
    for (Button& button : cmdRemove)
        m_buttonRemove.ShowOn(button);
    chkReader[0].Caption = m_optionHeader.Caption();
    chkReader[1].Caption = m_optionTerminator.Caption();
}

void QXBarcode::ShowPage(Integer nPage) {
    m_page = nPage;
    lstPrefGroup.ListIndex = nPage;
    ShowOptions();
    ShowReader();
}

// Shows the option page, or hides its children on a reader's page.
void QXBarcode::ShowOptions() {
    const bool isShown = !IsReaderPage();
    static const BarcodeOptionPage kNone;
    const BarcodeOptionPage& page = isShown ? CurrentPage() : kNone;
    for (Integer nID = 0; nID < BarcodeOptionPage::kFlags; ++nID) {
        CheckBox& box = chkBarOption[static_cast<std::size_t>(nID)];
        box.Visible = nID < page.OptionNum();
        box.Caption = page.Flag(nID).Caption();
        box.Value = page.Flag(nID).CtlValue();
        box.Enabled = !isShown || HasBarcodeConfigBit(static_cast<BarcodePage>(m_page), nID);
    }
    const std::array<Integer, 2> sizes{page.MinSize(), page.MaxSize()};
    for (std::size_t i = 0; i < sizes.size(); ++i) {
        // Includes a size outside the limits, so that moving the slider changes it.
        slidRange[i] = {std::min(page.LimitMinSize(), sizes[i]),
                        std::max(page.LimitMaxSize(), sizes[i]), sizes[i], page.SupportsSizing()};
        lblCurrSize[i] = {std::to_string(sizes[i]), page.SupportsSizing()};
        lblRange[i].Visible = page.SupportsSizing();
    }
}

// Shows the reader's panel, or hides it on an option page.
void QXBarcode::ShowReader() {
    const bool isShown = IsReaderPage();
    lblHint.Visible = isShown;
    chkShowDetails.Visible = isShown;
    for (std::size_t i = 0; i < chkReader.size(); ++i) {
        chkReader[i].Visible = isShown;
        lblReader[i].Visible = isShown;
        cmdEdit[i].Visible = isShown;
        cmdRemove[i].Visible = isShown;
    }
    if (!isShown)
        return;
    lblHint.Caption = m_readerMsg[m_page == BP_Reader_1 ? 0 : 1];
    chkReader[0].Value = CurrentReader().HeaderEnabled() ? Integer{1} : Integer{0};
    chkReader[1].Value = CurrentReader().TerminatorEnabled() ? Integer{1} : Integer{0};
    ShowSequences();
}

void QXBarcode::ShowSequences() {
    if (!IsReaderPage())
        return;
    const bool fUseUpcodes = chkShowDetails.Value == 1;
    const MagneticTrack& reader = CurrentReader();
    lblReader[0].Caption = SequenceCaption(reader.Header(), LayoutSource(), fUseUpcodes);
    lblReader[1].Caption = SequenceCaption(reader.Terminator(), LayoutSource(), fUseUpcodes);
}

} // namespace qx
