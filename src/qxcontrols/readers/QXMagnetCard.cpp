#include "qxcontrols/readers/QXMagnetCard.h"

#include "qxcontrols/common/Text.h"
#include "qxcontrols/common/Trace.h"
#include "qxcontrols/device/QXKeyboardAccess.h"
#include "qxcontrols/keys/SequenceCaption.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace qx {

namespace {

// In the order of chkMagneticOptions.
constexpr OptionBool& (MagneticOptions::*kOptions[])() = {
    &MagneticOptions::VerifyLRC, &MagneticOptions::VerifyLastChar, &MagneticOptions::SendImmediate};

constexpr bool (QXKeyboardAccess::*kTrackFlags[kMagneticTracks])() const = {
    &QXKeyboardAccess::FlagMagneticTrack1, &QXKeyboardAccess::FlagMagneticTrack2,
    &QXKeyboardAccess::FlagMagneticTrack3, &QXKeyboardAccess::FlagMagneticTrack4};

constexpr Integer Checked(bool isOn) {
    return isOn ? Integer{1} : Integer{0};
}

} // namespace

QXMagnetCard::QXMagnetCard(const Platform& platform)
    : ModuleControl("QXMagnetCard", MODULE_MAGNET_CONFIG, platform) {
    for (Integer nTrack = 0; nTrack < kMagneticTracks; ++nTrack) {
        GetTrack(nTrack).SetCaption("#Track" + std::to_string(nTrack + 1) + "#");
        GetTrack(nTrack).SetEnabled(true);
    }
    ShowTexts();
    ShowOptions();
    AdjustControlsForCurrentTrack();
}

void QXMagnetCard::SetReaderOptions(const MagneticOptions& options) {
    m_settings.options = options;
    ValuesChanged();
}

MagneticTrack& QXMagnetCard::Track(Integer nTrackId) {
    return const_cast<MagneticTrack&>(std::as_const(*this).Track(nTrackId));
}

const MagneticTrack& QXMagnetCard::Track(Integer nTrackId) const {
    if (nTrackId < 1 || nTrackId > kMagneticTracks)
        throw std::out_of_range("track " + std::to_string(nTrackId) + " is not one of 1 to 4");
    return m_settings.tracks[static_cast<std::size_t>(nTrackId - 1)];
}

void QXMagnetCard::SetTrack(Integer nTrackId, const MagneticTrack& track) {
    Track(nTrackId) = track;
    ShowTexts();
    ValuesChanged();
}

void QXMagnetCard::SetCaptions(const MagneticCaptions& captions) {
    m_captions = captions;
    TextsChanged();
}

void QXMagnetCard::SetShowDetails(std::string sCaption) {
    chkShowDetails.Caption = std::move(sCaption);
    Refreshed.Raise();
}

void QXMagnetCard::RescanTracks() {
    TraceNamed(".RescanTracks");
    ScanTracks();
}

void QXMagnetCard::ScanTracks() {
    m_dispatch.clear();
    for (Integer nTrack = 0; nTrack < kMagneticTracks; ++nTrack) {
        MagneticTrack& track = GetTrack(nTrack);
        if (Keyboard() != nullptr)
            track.SetAvailable((Keyboard()->*kTrackFlags[nTrack])());
        if (track.Available())
            AddTrackDispatch(nTrack);
    }
    ShowTexts();
    ActivateTrack(m_currTrack);
    Refreshed.Raise();
}

void QXMagnetCard::ReloadKeysSettings() {
    TraceNamed(".ReloadKeysSettings");
    SequencesChanged();
}

void QXMagnetCard::DumpContext() const {
    TraceNamed(".DumpContext");
    Trace("ConfigID = " + std::to_string(ConfigID()) +
          "  DataChanged = " + std::string(TrueFalse(DataChanged())));
    const auto trace = [](const std::string& name, bool isOn) {
        Trace(name + " = " + std::string(TrueFalse(isOn)));
    };
    trace("VerifyLRC", ReaderOptions().VerifyLRC().Value());
    trace("VerifyLastChar", ReaderOptions().VerifyLastChar().Value());
    trace("SendImmediate", ReaderOptions().SendImmediate().Value());
    for (Integer nTrackId = 1; nTrackId <= kMagneticTracks; ++nTrackId) {
        const MagneticTrack& track = Track(nTrackId);
        const std::string name = "Track" + std::to_string(nTrackId) + " ";
        Trace(name + "Caption = " + track.Caption());
        trace(name + "Available", track.Available());
        trace(name + "Enabled", track.Enabled());
        trace(name + "HeaderEnabled", track.HeaderEnabled());
        Trace(name + "Header = " + track.Header().KeyString());
        trace(name + "TerminatorEnabled", track.TerminatorEnabled());
        Trace(name + "Terminator = " + track.Terminator().KeyString());
    }
    std::string listed;
    for (const Integer nTrack : m_dispatch)
        listed += " " + std::to_string(nTrack);
    Trace("Dispatch =" + listed);
    Trace("Current track = " + std::to_string(m_currTrack));
}

void QXMagnetCard::DefaultValues() {
    TraceNamed(".DefaultValues");
    for (MagneticTrack& track : m_settings.tracks)
        SetTrackDefaults(track);
    for (const auto option : kOptions)
        (m_settings.options.*option)().SetValue(true);
    AdjustControls();
}

void QXMagnetCard::Translate() {
    TraceNamed(".Translate");
    TextsChanged();
}

void QXMagnetCard::AdjustControls() {
    TraceNamed(".AdjustControls");
    ValuesChanged();
}

void QXMagnetCard::chkMagneticOptions_Click(Integer Index) {
    if (Index < 0 || Index >= static_cast<Integer>(std::size(kOptions)))
        return;
    OptionBool& option = (m_settings.options.*kOptions[Index])();
    const bool isOn = chkMagneticOptions[static_cast<std::size_t>(Index)].Value == 1;
    if (isOn == option.Value())
        return;
    option.SetValue(isOn);
    SetDataChanged(true);
    Refreshed.Raise();
}

void QXMagnetCard::trackList_Click() {
    const Integer nPosition = trackList.ListIndex;
    if (nPosition < 0 || nPosition >= static_cast<Integer>(m_dispatch.size()))
        return;
    ActivateTrack(DispatchToTrack(nPosition));
    Refreshed.Raise();
}

void QXMagnetCard::chkEnableCurrentTrack_Click() {
    Store(chkEnableCurrentTrack.Value == 1, GetCurrTrack().Enabled(), &MagneticTrack::SetEnabled);
}

void QXMagnetCard::chkUseThisHeader_Click() {
    Store(chkUseThisHeader.Value == 1, GetCurrTrack().HeaderEnabled(),
          &MagneticTrack::SetHeaderEnabled);
}

void QXMagnetCard::chkUseThisTerminator_Click() {
    Store(chkUseThisTerminator.Value == 1, GetCurrTrack().TerminatorEnabled(),
          &MagneticTrack::SetTerminatorEnabled);
}

void QXMagnetCard::Store(bool isOn, bool wasOn, void (MagneticTrack::*set)(bool)) {
    if (isOn == wasOn)
        return;
    (GetCurrTrack().*set)(isOn);
    SetDataChanged(true);
    Refreshed.Raise();
}

void QXMagnetCard::cmdCreate_Click(Integer Index) {
    if (Index != 0 && Index != 1)
        return;
    const Integer nTrack = m_currTrack; // the host may select another track in the event
    KeySequence& sequence = SequenceOf(GetTrack(nTrack), Index);
    const std::string sInSequence = sequence.KeyString();
    std::string sOutSequence = sInSequence;
    bool fCancelAction = false;
    const auto& event = Index == 0 ? EditCurrentHeader : EditCurrentTerminator;
    event.Raise(static_cast<Integer>(nTrack + 1), sInSequence, fCancelAction, sOutSequence);
    if (fCancelAction)
        return;
    if (!Guarded(".cmdCreate_Click", [&] { sequence.SetKeyString(std::move(sOutSequence)); }))
        return;
    SetDataChanged(true);
    AdjustControlsForCurrentTrack();
    Refreshed.Raise();
}

void QXMagnetCard::cmdRemove_Click(Integer Index) {
    if (Index != 0 && Index != 1)
        return;
    const Integer nTrack = m_currTrack;
    bool fCanRemoveIt = true;
    const auto& event = Index == 0 ? ClearCurrentHeader : ClearCurrentTerminator;
    event.Raise(static_cast<Integer>(nTrack + 1), fCanRemoveIt);
    if (!fCanRemoveIt)
        return;
    SequenceOf(GetTrack(nTrack), Index).Clear();
    SetDataChanged(true);
    AdjustControlsForCurrentTrack();
    Refreshed.Raise();
}

void QXMagnetCard::lblCurrHeader_KeyPress() {
    AskAndEdit(0);
}

void QXMagnetCard::lblCurrTerminator_KeyPress() {
    AskAndEdit(1);
}

void QXMagnetCard::AskAndEdit(Integer Index) {
    bool fEdit = false;
    AdvanceEdit.Raise(fEdit);
    if (fEdit)
        cmdCreate_Click(Index);
}

void QXMagnetCard::chkShowDetails_Click() {
    SequencesChanged();
}

void QXMagnetCard::AddTrackDispatch(Integer nTrack) {
    if (m_dispatch.size() < static_cast<std::size_t>(kMagneticTracks))
        m_dispatch.push_back(nTrack);
}

Integer QXMagnetCard::DispatchToTrack(Integer nPosition) const {
    return m_dispatch.at(static_cast<std::size_t>(nPosition));
}

Integer QXMagnetCard::TrackToDispatcher(Integer nTrack) const {
    const auto found = std::find(m_dispatch.begin(), m_dispatch.end(), nTrack);
    return found == m_dispatch.end() ? Integer{-1}
                                     : static_cast<Integer>(found - m_dispatch.begin());
}

void QXMagnetCard::ActivateTrack(Integer nTrack) {
    m_currTrack = nTrack;
    AdjustControlsForGivenTrack(nTrack);
    trackList.ListIndex = TrackToDispatcher(nTrack);
}

void QXMagnetCard::AdjustControlsForCurrentTrack() {
    AdjustControlsForGivenTrack(m_currTrack);
}

void QXMagnetCard::AdjustControlsForGivenTrack(Integer nTrack) {
    const MagneticTrack& track = GetTrack(nTrack);
    chkEnableCurrentTrack.Value = Checked(track.Enabled());
    chkUseThisHeader.Value = Checked(track.HeaderEnabled());
    chkUseThisTerminator.Value = Checked(track.TerminatorEnabled());
    const bool isListed = TrackToDispatcher(nTrack) != -1;
    for (CheckBox* box : {&chkEnableCurrentTrack, &chkUseThisHeader, &chkUseThisTerminator})
        box->Enabled = isListed;
    for (auto* buttons : {&cmdCreate, &cmdRemove})
        for (Button& button : *buttons)
            button.Enabled = isListed;
    for (Label* label : {&lblCurrHeader, &lblCurrTerminator})
        label->Enabled = isListed;
    ShowSequences();
}

MagneticTrack& QXMagnetCard::GetTrack(Integer nTrack) {
    return m_settings.tracks[static_cast<std::size_t>(nTrack)];
}

void QXMagnetCard::TextsChanged() {
    ShowTexts();
    ShowOptions();
    Refreshed.Raise();
}

void QXMagnetCard::ValuesChanged() {
    ShowOptions();
    AdjustControlsForCurrentTrack();
    Refreshed.Raise();
}

void QXMagnetCard::SequencesChanged() {
    ShowSequences();
    Refreshed.Raise();
}

void QXMagnetCard::ShowTexts() {
    lblTracks.Caption = m_captions.Tracks();
    lblCommonPrefs.Caption = m_captions.CommonPrefs();
    lblTrackPreferences.Caption = m_captions.TrackPreferences();
    lblHeaderAndTerminator.Caption = m_captions.HeaderAndTerminator();
    chkEnableCurrentTrack.Caption = m_captions.UseThisTrack();
    chkUseThisHeader.Caption = m_captions.UseThisHeader();
    chkUseThisTerminator.Caption = m_captions.UseThisTerminator();
    m_captions.CreateHeader().ShowOn(cmdCreate[0]);
    m_captions.CreateTerminator().ShowOn(cmdCreate[1]);
    m_captions.RemoveHeader().ShowOn(cmdRemove[0]);
    m_captions.RemoveTerminator().ShowOn(cmdRemove[1]);
    trackList.Items.clear();
    for (const Integer nTrack : m_dispatch)
        trackList.Items.push_back(GetTrack(nTrack).Caption());
}

void QXMagnetCard::ShowOptions() {
    for (std::size_t i = 0; i < std::size(kOptions); ++i) {
        const OptionBool& option = (m_settings.options.*kOptions[i])();
        chkMagneticOptions[i].Caption = option.Caption();
        chkMagneticOptions[i].Value = option.CtlValue();
    }
}

void QXMagnetCard::ShowSequences() {
    const bool fUseUpcodes = chkShowDetails.Value == 1;
    const MagneticTrack& track = GetCurrTrack();
    lblCurrHeader.Caption = SequenceCaption(track.Header(), LayoutSource(), fUseUpcodes);
    lblCurrTerminator.Caption = SequenceCaption(track.Terminator(), LayoutSource(), fUseUpcodes);
}

} // namespace qx
